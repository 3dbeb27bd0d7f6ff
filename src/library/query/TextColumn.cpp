#include "library/query/TextColumn.h"

#include "library/query/FoldedText.h"
#include "library/sql/LetterCase.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <numeric>

namespace
{
bool isAscii (std::string_view text)
{
    return std::all_of (text.begin(), text.end(),
                        [] (char c) { return static_cast<unsigned char> (c) < 0x80; });
}

/** The first eight bytes as a number that sorts as they do. */
uint64_t beginningOf (std::string_view text)
{
    uint64_t number = 0;
    for (size_t i = 0; i < 8; ++i)
        number = number << 8 | (i < text.size() ? static_cast<unsigned char> (text[i]) : 0u);
    return number;
}
}

std::string_view TextColumn::entry (uint32_t value) const
{
    const size_t begin = starts[value];
    const auto end = value + 1 < starts.size() ? starts[value + 1] : bytes.size();
    return std::string_view (bytes).substr (begin, end - begin);
}

std::string_view TextColumn::upper (uint32_t value) const
{
    const auto both = entry (value);
    return both.substr (0, both.find ('\0'));
}

std::string_view TextColumn::folded (uint32_t value) const
{
    const auto both = entry (value);
    const auto end = both.find ('\0');
    return end + 1 == both.size() ? both.substr (0, end) : both.substr (end + 1, both.size() - end - 2);
}

uint32_t& TextColumn::slotOf (std::string_view upperCase)
{
    const auto mask = slots.size() - 1;
    for (auto at = std::hash<std::string_view>() (upperCase) & mask;; at = (at + 1) & mask)
        if (slots[at] == 0 || upper (slots[at] - 1) == upperCase)
            return slots[at];
}

void TextColumn::growTable()
{
    slots.assign (std::max<size_t> (64, slots.size() * 2), 0);
    while (slots.size() < 2 * starts.size())
        slots.resize (slots.size() * 2, 0);
    for (uint32_t value = 0; value < starts.size(); ++value)
        slotOf (upper (value)) = value + 1;
}

uint32_t TextColumn::add (std::string_view text)
{
    text = text.substr (0, text.find ('\0'));
    FoldedText::upper (text, upperText);
    if (2 * (starts.size() + 1) > slots.size())
        growTable();
    auto& slot = slotOf (upperText);
    if (slot != 0)
        return slot - 1;
    starts.push_back (static_cast<uint32_t> (bytes.size()));
    slot = static_cast<uint32_t> (starts.size());
    bytes.append (upperText).push_back ('\0');
    if (!isAscii (upperText))
    {
        FoldedText::strip (upperText, foldedText);
        if (foldedText != upperText)
            bytes.append (foldedText).push_back ('\0');
    }
    return slot - 1;
}

void TextColumn::find (std::string_view word, std::vector<uint8_t>& hits) const
{
    auto value = starts.begin();
    for (size_t at = 0; at < bytes.size();)
    {
        const auto* const found = static_cast<const char*> (
            ::memmem (bytes.data() + at, bytes.size() - at, word.data(), word.size()));
        if (found == nullptr)
            return;
        const auto place = static_cast<uint32_t> (found - bytes.data());
        value = std::upper_bound (value, starts.end(), place);
        hits[static_cast<size_t> (value - starts.begin()) - 1] = 1;
        at = value != starts.end() ? *value : bytes.size();
    }
}

void TextColumn::findPattern (std::string_view pattern, std::vector<uint8_t>& hits) const
{
    const LetterCase::Pattern like ("%" + std::string (pattern) + "%");
    for (uint32_t value = 0; value < size(); ++value)
        if (like.matches (folded (value)))
            hits[value] = 1;
}

void TextColumn::findWhole (std::string_view text, std::vector<uint8_t>& hits) const
{
    for (uint32_t value = 0; value < size(); ++value)
        if (folded (value) == text)
            hits[value] = 1;
}

std::vector<uint32_t> TextColumn::ranks (std::span<const uint32_t> before) const
{
    struct Key
    {
        uint64_t beginning;
        uint32_t value;
    };
    const auto known = static_cast<uint32_t> (before.size());
    std::vector<Key> keys (size() - known);
    for (auto value = known; value < size(); ++value)
        keys[value - known] = { beginningOf (upper (value)), value };
    std::sort (keys.begin(), keys.end(),
               [this] (const Key& a, const Key& b) {
                   return a.beginning != b.beginning ? a.beginning < b.beginning
                                                     : upper (a.value) < upper (b.value);
               });
    std::vector<uint32_t> order (known), ranks (size());
    for (uint32_t value = 0; value < known; ++value)
        order[before[value]] = value;
    uint32_t rank = 0;
    auto next = order.begin();
    const auto placeUpTo = [&] (std::vector<uint32_t>::iterator end)
    {
        for (; next != end; ++next)
            ranks[*next] = rank++;
    };
    for (const auto& key : keys)
    {
        placeUpTo (std::lower_bound (next, order.end(), upper (key.value),
                                     [this] (uint32_t value, std::string_view text)
                                     { return upper (value) < text; }));
        ranks[key.value] = rank++;
    }
    placeUpTo (order.end());
    return ranks;
}

void TextColumn::shrink()
{
    bytes.shrink_to_fit();
    starts.shrink_to_fit();
}

size_t TextColumn::bytesUsed() const
{
    return bytes.capacity() + (starts.capacity() + slots.capacity()) * sizeof (uint32_t);
}

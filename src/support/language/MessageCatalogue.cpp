#include "support/language/MessageCatalogue.h"

#include <algorithm>
#include <cstring>

namespace
{
// The layout of .mo files is that of the manual of GNU gettext, "The Format of GNU MO Files".
constexpr uint32_t magic = 0x950412de, swappedMagic = 0xde120495;
constexpr size_t headerBytes = 20, entryBytes = 8;

/** Bytes with their order. */
class Words
{
public:
    explicit Words (std::span<const std::byte> f) : file (f)
    {
        isSwapped = file.size() >= 4 && raw (0) == swappedMagic;
    }

    bool areOfCatalogue() const { return file.size() >= headerBytes && (isSwapped || raw (0) == magic); }

    /** The word at an offset within the file. */
    uint32_t at (size_t offset) const
    {
        const auto word = raw (offset);
        return isSwapped ? juce::ByteOrder::swap (word) : word;
    }

    /** @returns nothing if the table doesn't lie within the file */
    bool holds (uint64_t offset, uint64_t bytes) const { return offset + bytes <= file.size(); }

    /** The text of an entry of a table, without its closing zero; nothing if it doesn't lie within the file. */
    std::optional<std::string_view> textAt (size_t entry) const
    {
        const auto length = at (entry), offset = at (entry + 4);
        if (!holds (offset, uint64_t { length } + 1) || file[size_t { offset } + length] != std::byte {})
            return {};
        return std::string_view (reinterpret_cast<const char*> (file.data()) + offset, length);
    }

private:
    uint32_t raw (size_t offset) const { return juce::ByteOrder::littleEndianInt (file.data() + offset); }

    std::span<const std::byte> file;
    bool isSwapped = false;
};

/** The parts of a text between zeros; empty if one of them isn't UTF-8. */
std::vector<juce::String> formsOf (std::string_view text)
{
    if (!juce::CharPointer_UTF8::isValidString (text.data(), static_cast<int> (text.size())))
        return {};
    std::vector<juce::String> forms;
    for (;;)
    {
        const auto end = std::min (text.find ('\0'), text.size());
        forms.push_back (juce::String (std::string (text.substr (0, end))));
        if (end == text.size())
            return forms;
        text.remove_prefix (end + 1);
    }
}
}

std::optional<MessageCatalogue> MessageCatalogue::read (std::span<const std::byte> file)
{
    const Words words (file);
    if (!words.areOfCatalogue() || words.at (4) >> 16 > 1)
        return {};
    const uint64_t count = words.at (8);
    const size_t originals = words.at (12), translations = words.at (16);
    if (!words.holds (originals, count * entryBytes) || !words.holds (translations, count * entryBytes))
        return {};
    MessageCatalogue made;
    for (size_t i = 0; i < count; ++i)
    {
        const auto original = words.textAt (originals + i * entryBytes);
        const auto translation = words.textAt (translations + i * entryBytes);
        if (!original || !translation)
            return {};
        if (original->empty())
        {
            made.readHeader (*translation);
            continue;
        }
        // Of a plural the first English form is the key.
        auto forms = formsOf (*translation);
        const auto isTranslated =
            !forms.empty()
            && std::none_of (forms.begin(), forms.end(), [] (const auto& each) { return each.isEmpty(); });
        if (isTranslated)
            made.texts.emplace (original->substr (0, original->find ('\0')), std::move (forms));
    }
    return made;
}

void MessageCatalogue::readHeader (std::string_view header)
{
    const auto valueOf = [header] (std::string_view field) -> std::string_view
    {
        const auto at = header.find (field);
        if (at == std::string_view::npos)
            return {};
        const auto rest = header.substr (at + field.size());
        return rest.substr (0, rest.find ('\n'));
    };
    if (const auto rule = PluralRule::read (valueOf ("Plural-Forms:")))
        plural = *rule;
    if (const auto forms = formsOf (valueOf ("X-Language-Name:")); !forms.empty())
        ownName = forms.front().trim();
}

const juce::String* MessageCatalogue::find (std::string_view english) const
{
    const auto found = texts.find (english);
    return found != texts.end() ? &found->second.front() : nullptr;
}

const juce::String* MessageCatalogue::findPlural (std::string_view one, uint64_t n) const
{
    const auto found = texts.find (one);
    if (found == texts.end())
        return nullptr;
    const auto& forms = found->second;
    return &forms[std::min (static_cast<size_t> (plural.formFor (n)), forms.size() - 1)];
}

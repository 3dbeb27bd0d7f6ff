#include "library/query/FoldedText.h"
#include "library/query/QueryTerms.h"

#include <algorithm>

namespace
{
/** A cell's text as it is searched, and the character of the cell that each byte comes from. */
struct FoldedCell
{
    explicit FoldedCell (const juce::String& cell)
    {
        auto index = 0;
        for (auto c = cell.getCharPointer(); !c.isEmpty(); ++c, ++index)
        {
            const auto folded = FoldedText::of (juce::String::charToString (*c).toStdString());
            text += folded;
            characters.insert (characters.end(), folded.size(), index);
        }
        characters.push_back (index);
    }

    std::string text;
    std::vector<int> characters; ///< one more than bytes
};

void addRange (const FoldedCell& cell, size_t at, size_t bytes, std::vector<juce::Range<int>>& marks)
{
    // An accent behind the last letter belongs to it.
    marks.push_back ({ cell.characters[at],
                       juce::jmax (cell.characters[at + bytes], cell.characters[at + bytes - 1] + 1) });
}

void addWord (const FoldedCell& cell, const std::string& word, std::vector<juce::Range<int>>& marks)
{
    // Of a pattern, the parts between its wildcards are marked.
    for (size_t from = 0; from < word.size();)
    {
        const auto end = std::min (word.find_first_of ("%_", from), word.size());
        const auto part = word.substr (from, end - from);
        from = end + 1;
        if (part.empty())
            continue;
        for (auto at = cell.text.find (part); at != std::string::npos;
             at = cell.text.find (part, at + part.size()))
            addRange (cell, at, part.size(), marks);
    }
}

std::vector<juce::Range<int>> joined (std::vector<juce::Range<int>> marks)
{
    std::sort (marks.begin(), marks.end(),
               [] (const auto& a, const auto& b) { return a.getStart() < b.getStart(); });
    std::vector<juce::Range<int>> apart;
    for (const auto& mark : marks)
        if (apart.empty() || apart.back().getEnd() < mark.getStart())
            apart.push_back (mark);
        else
            apart.back() = apart.back().getUnionWith (mark);
    return apart;
}
}

std::vector<juce::Range<int>> marksIn (const juce::String& cell, const QueryTerms& terms, SongField field,
                                       std::span<const SongField> chosen)
{
    std::vector<juce::Range<int>> marks;
    if (terms.isEmpty() || cell.isEmpty())
        return marks;
    const auto isChosen = std::find (chosen.begin(), chosen.end(), field) != chosen.end();
    const auto isWhole = [field] (const auto& condition) { return condition.field == field; };
    if (std::any_of (terms.ranges.begin(), terms.ranges.end(), isWhole)
        || std::any_of (terms.choices.begin(), terms.choices.end(), isWhole))
        return { { 0, cell.length() } };
    const FoldedCell folded (cell);
    for (const auto& word : terms.words)
        if (word.field ? *word.field == field : isChosen)
            addWord (folded, word.folded, marks);
    return joined (std::move (marks));
}

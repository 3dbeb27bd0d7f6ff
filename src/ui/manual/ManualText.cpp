#include "ui/manual/ManualText.h"

namespace
{
using Kind = ManualBlock::Kind;
using Style = ManualSpan::Style;

/** Reads what is set in its own way at the start of a text: `opening`, words, `closing`.
    @returns the words; the text goes on behind them. Empty if there is none, which leaves the text as it is */
juce::String takeEnclosed (juce::String& text, const char* opening, const char* closing)
{
    const juce::String before (opening), after (closing);
    const auto end = text.indexOf (before.length(), after);
    if (!text.startsWith (before) || end <= before.length())
        return {};
    const auto words = text.substring (before.length(), end);
    text = text.substring (end + after.length());
    return words;
}

std::vector<ManualSpan> readSpans (juce::String text)
{
    std::vector<ManualSpan> spans;
    const auto add = [&spans] (const juce::String& words, Style style, const juce::String& target)
    {
        if (style == Style::plain && !spans.empty() && spans.back().style == Style::plain)
            spans.back().text << words;
        else
            spans.push_back ({ words, style, target });
    };
    while (text.isNotEmpty())
    {
        if (const auto strong = takeEnclosed (text, "**", "**"); strong.isNotEmpty())
            add (strong, Style::strong, {});
        else if (const auto key = takeEnclosed (text, "`", "`"); key.isNotEmpty())
            add (key, Style::strong, {});
        else if (auto rest = text; takeEnclosed (rest, "[", "]").isNotEmpty() && rest.startsWith ("("))
        {
            const auto words = takeEnclosed (text, "[", "]");
            add (words, Style::link, takeEnclosed (text, "(", ")"));
        }
        else
        {
            const auto next = text.substring (1).indexOfAnyOf ("*`[") + 1;
            add (next > 0 ? text.substring (0, next) : text, Style::plain, {});
            text = next > 0 ? text.substring (next) : juce::String();
        }
    }
    return spans;
}

/** A line without its mark, which says what begins with it. */
struct MarkedLine
{
    Kind kind = Kind::paragraph;
    int number = 0;
    juce::String text;
    bool isMarked = false;
};

MarkedLine readLine (const juce::String& line)
{
    for (const auto& [mark, kind] :
         { std::pair { "# ", Kind::title }, { "## ", Kind::heading }, { "- ", Kind::bullet } })
        if (line.startsWith (mark))
            return { kind, 0, line.substring (juce::String (mark).length()), true };
    const auto digits = line.initialSectionContainingOnly ("0123456789");
    if (digits.isNotEmpty() && line.substring (digits.length()).startsWith (". "))
        return { Kind::step, digits.getIntValue(), line.substring (digits.length() + 2), true };
    return { Kind::paragraph, 0, line, false };
}
}

juce::String ManualBlock::text() const
{
    juce::String all;
    for (const auto& span : spans)
        all << span.text;
    return all;
}

namespace ManualText
{
std::vector<ManualBlock> read (const juce::String& markdown)
{
    std::vector<ManualBlock> blocks;
    juce::String words;
    auto isOpen = false; // the last block takes further lines
    const auto close = [&]
    {
        if (isOpen)
            blocks.back().spans = readSpans (words);
        isOpen = false;
    };
    for (const auto& each : juce::StringArray::fromLines (markdown))
    {
        const auto line = each.trim();
        if (line.isEmpty())
        {
            close();
            continue;
        }
        if (auto rest = line; rest.startsWith ("!["))
        {
            close();
            rest = rest.substring (1);
            const auto caption = takeEnclosed (rest, "[", "]");
            blocks.push_back ({ Kind::picture, 0, { { caption } }, takeEnclosed (rest, "(", ")") });
            continue;
        }
        const auto marked = readLine (line);
        if (isOpen && !marked.isMarked)
        {
            words << " " << line;
            continue;
        }
        close();
        blocks.push_back ({ marked.kind, marked.number });
        words = marked.text;
        isOpen = true;
        if (marked.kind == Kind::title || marked.kind == Kind::heading)
            close();
    }
    close();
    return blocks;
}

juce::String anchorOf (const juce::String& heading)
{
    return heading.toLowerCase()
        .retainCharacters ("abcdefghijklmnopqrstuvwxyz0123456789 -")
        .replaceCharacter (' ', '-');
}
}

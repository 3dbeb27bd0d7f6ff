#pragma once

#include <juce_core/juce_core.h>

#include <vector>

/** A piece of a paragraph that is set in one way. */
struct ManualSpan
{
    enum class Style
    {
        plain,
        strong, ///< **what stands on the window**, and `keys`
        link
    };

    juce::String text;
    Style style = Style::plain;
    juce::String target = {}; ///< of a link: "page.md", "page.md#heading" or "#heading"
};

/** A heading, paragraph, row of a list, or picture. */
struct ManualBlock
{
    enum class Kind
    {
        title,
        heading,
        paragraph,
        bullet,
        step, ///< of a numbered list
        picture
    };

    Kind kind = Kind::paragraph;
    int number = 0; ///< of a step
    std::vector<ManualSpan> spans = {};
    juce::String file = {}; ///< of a picture, from the page's folder

    /** The words alone. */
    juce::String text() const;
};

/** Pages of the manual are Markdown: headings of two ranks, paragraphs, lists of one rank, **strong**, `keys`, [links](page.md#heading) and
    pictures on a line of their own. */
namespace ManualText
{
/** The blocks of a page, in order. Whatever is none of the above is a paragraph. */
std::vector<ManualBlock> read (const juce::String& markdown);

/** A heading as links name it: "Set a cue" is "set-a-cue". */
juce::String anchorOf (const juce::String& heading);
}

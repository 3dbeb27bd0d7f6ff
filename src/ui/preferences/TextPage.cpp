#include "ui/preferences/TextPage.h"

#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/panel/PanelPaint.h"

namespace
{
constexpr int gap = 10;
}

TextPage::TextPage (std::span<const TextSection> s) : sections (s)
{
    setOpaque (true);
    setSize (width, 1);
    const auto height = blocks.empty() ? 0 : blocks.back().body.getBottom();
    setSize (width, height + margin);
}

juce::String TextPage::text() const
{
    juce::String all;
    for (const auto& section : sections)
        all << tr (section.title) << "\n" << tr (section.text) << "\n";
    return all;
}

void TextPage::resized()
{
    blocks.clear();
    auto top = margin;
    const auto textWidth = getWidth() - 2 * margin;
    for (const auto& section : sections)
    {
        juce::AttributedString text (tr (section.text));
        text.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
        text.setColour (palette::value);
        text.setWordWrap (juce::AttributedString::byWord);
        Block block;
        block.layout.createLayout (text, static_cast<float> (textWidth));
        block.title = { margin, top, textWidth, titleHeight };
        block.body = { margin, top + titleHeight, textWidth,
                       juce::roundToInt (std::ceil (block.layout.getHeight())) };
        top = block.body.getBottom() + gap;
        blocks.push_back (std::move (block));
    }
}

void TextPage::paint (juce::Graphics& g)
{
    g.fillAll (palette::panel);
    for (size_t i = 0; i < blocks.size(); ++i)
    {
        const auto& block = blocks[i];
        PanelPaint::value (g, tr (sections[i].title), block.title, juce::Justification::centredLeft,
                           SMLookAndFeel::titleSize);
        block.layout.draw (g, block.body.toFloat());
    }
}

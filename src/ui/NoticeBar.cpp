#include "ui/NoticeBar.h"

#include "skin/Palette.h"
#include "ui/look/SMLookAndFeel.h"

void NoticeBar::show (const juce::String& sentence, std::function<void()> help)
{
    text = sentence;
    onClick = std::move (help);
    setMouseCursor (onClick != nullptr ? juce::MouseCursor::PointingHandCursor
                                       : juce::MouseCursor::NormalCursor);
    repaint();
}

void NoticeBar::paint (juce::Graphics& g)
{
    g.fillAll (palette::danger);
    g.setColour (palette::textOn (palette::danger));
    g.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
    g.drawFittedText (text, getLocalBounds().reduced (8, 0), juce::Justification::centred, 1);
}

void NoticeBar::mouseUp (const juce::MouseEvent& event)
{
    if (onClick != nullptr && getLocalBounds().contains (event.getPosition()))
        onClick();
}

#include "ui/NoticeBar.h"

#include "skin/Palette.h"
#include "ui/look/SMLookAndFeel.h"

void NoticeBar::show (const juce::String& sentence, std::function<void()> help)
{
    trouble = { sentence, std::move (help) };
    follow();
}

void NoticeBar::tell (const juce::String& sentence, juce::uint32 until, std::function<void()> help)
{
    news = { sentence, std::move (help) };
    newsUntil = until;
    follow();
}

bool NoticeBar::expire (juce::uint32 now)
{
    if (news.text.isEmpty() || now < newsUntil)
        return false;
    news = {};
    follow();
    return true;
}

void NoticeBar::follow()
{
    setMouseCursor (shown().onClick != nullptr ? juce::MouseCursor::PointingHandCursor
                                               : juce::MouseCursor::NormalCursor);
    repaint();
}

void NoticeBar::paint (juce::Graphics& g)
{
    const auto ground = trouble.text.isEmpty() ? palette::quiet : palette::danger;
    g.fillAll (ground);
    g.setColour (palette::textOn (ground));
    g.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
    g.drawFittedText (sentence(), getLocalBounds().reduced (8, 0), juce::Justification::centred, 1);
}

void NoticeBar::mouseUp (const juce::MouseEvent& event)
{
    if (shown().onClick != nullptr && getLocalBounds().contains (event.getPosition()))
        shown().onClick();
}

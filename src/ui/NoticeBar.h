#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

/** A sentence over the whole width of the window: one that stays until its cause has gone, as that there is no sound, or, while
    there is none of these, good news for some seconds. A click on it opens what helps. */
class NoticeBar : public juce::Component
{
public:
    static constexpr int height = 24;

    NoticeBar() { setOpaque (true); }

    /** @param help   called by a click; may be empty */
    void show (const juce::String& sentence, std::function<void()> help);

    /** Good news, which a sentence of trouble covers. @param until   ms of the clock that expire() is asked by */
    void tell (const juce::String& sentence, juce::uint32 until, std::function<void()> help);

    /** Takes news away whose time is over. @returns true if it has */
    bool expire (juce::uint32 now);

    const juce::String& sentence() const noexcept
    {
        return trouble.text.isEmpty() ? news.text : trouble.text;
    }

    void paint (juce::Graphics&) override;
    void mouseUp (const juce::MouseEvent&) override;

private:
    struct Line
    {
        juce::String text;
        std::function<void()> onClick;
    };

    const Line& shown() const noexcept { return trouble.text.isEmpty() ? news : trouble; }
    void follow();

    Line trouble, news;
    juce::uint32 newsUntil = 0;
};

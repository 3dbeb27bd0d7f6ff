#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

/** A sentence over the whole width of the window that stays until its cause has gone, as that there is no sound. A click on
    it opens what helps. */
class NoticeBar : public juce::Component
{
public:
    static constexpr int height = 24;

    NoticeBar() { setOpaque (true); }

    /** @param help   called by a click; may be empty */
    void show (const juce::String& sentence, std::function<void()> help);

    const juce::String& sentence() const noexcept { return text; }

    void paint (juce::Graphics&) override;
    void mouseUp (const juce::MouseEvent&) override;

private:
    juce::String text;
    std::function<void()> onClick;
};

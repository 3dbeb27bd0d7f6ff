#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <vector>

/** What stands in the browser's place: how to begin, and the keys that play. */
class BrowserSeat : public juce::Component
{
public:
    BrowserSeat();

    void paint (juce::Graphics&) override;

private:
    struct Line
    {
        juce::String key, text; ///< a line without a text is a heading
        int deck = -1;          ///< whose key it is
    };

    static void paintLine (juce::Graphics&, const Line&, juce::Rectangle<int> row);

    std::vector<std::vector<Line>> groups;
};

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <array>
#include <vector>

/** What stands in the browser's place: the keys that play, one row for what they do and one column for each deck, and how
    to begin where there is room for it. */
class BrowserSeat : public juce::Component
{
public:
    BrowserSeat();

    void paint (juce::Graphics&) override;

private:
    /** What can be done, and the key that does it on each deck. */
    struct Deed
    {
        juce::String text;
        std::array<juce::String, 4> keys;
    };

    /** A key of no deck. */
    struct DeskKey
    {
        juce::String key, text;
    };

    /** How the parts share the room. */
    struct Plan
    {
        int rows = 0;   ///< of a block of deeds, without its heading
        int blocks = 0; ///< 0 if there is no room at all
        bool desk = false, beginning = false;
        juce::Rectangle<int> area; ///< of all parts together
    };

    Plan plan() const;
    void paintDeeds (juce::Graphics&, juce::Rectangle<int> block, size_t from, size_t to) const;
    void paintDesk (juce::Graphics&, juce::Rectangle<int>) const;

    std::vector<Deed> deeds;
    std::vector<DeskKey> desk;
};

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <array>
#include <vector>

/** A card of the keys that play, a row for each action and a column for each deck, and the first steps where there is room for
    them. */
class KeyCard : public juce::Component
{
public:
    KeyCard();

    void paint (juce::Graphics&) override;

private:
    /** An action, and the key that does it on each deck. */
    struct Action
    {
        juce::String text;
        std::array<juce::String, 4> keys;
    };

    /** A key of no deck. */
    struct DeskKey
    {
        juce::String key, text;
    };

    /** The parts' share of the room. */
    struct Plan
    {
        int rows = 0;   ///< of a block of actions, without its heading
        int blocks = 0; ///< 0 if there is no room at all
        bool desk = false, beginning = false;
        juce::Rectangle<int> area; ///< of all parts together
    };

    Plan plan() const;
    void paintActions (juce::Graphics&, juce::Rectangle<int> block, size_t from, size_t to) const;
    void paintDesk (juce::Graphics&, juce::Rectangle<int>) const;

    std::vector<Action> actions;
    std::vector<DeskKey> desk;
};

#pragma once

#include "ui/DeckCommands.h"
#include "ui/PollingView.h"

#include <vector>

class CPlatterdex;

/** A deck's whole track as a picture with playhead and cue flags; a click seeks. */
class OverviewWaveform : public PollingView
{
public:
    OverviewWaveform (CPlatterdex&, int deck);

    /** Lines shown in the middle, over the picture. @param quiet   a hint that asks for nothing */
    void setNotice (const juce::StringArray& lines, bool quiet = false);
    const juce::StringArray& notice() const noexcept { return shownNotice; }

    void paint (juce::Graphics&) override;
    void resized() override { refresh(); }
    void mouseDown (const juce::MouseEvent&) override;

private:
    /** One pixel wide. Heights are fractions of the half picture, -1 to 1. */
    struct Column
    {
        float top = 0.0f, bottom = 0.0f, body = 0.0f;
        juce::Colour colour;
        bool operator== (const Column&) const = default;
    };

    struct Layout
    {
        juce::Rectangle<int> flags, picture;
    };

    struct Flag
    {
        int x = 0, number = 0;
        bool operator== (const Flag&) const = default;
    };

    void pollMoving() override;
    void pollCalm() override;
    Layout layout() const;
    std::vector<Column> readColumns() const;
    std::vector<Flag> readFlags() const;
    int xOf (double frame) const;
    void paintColumns (juce::Graphics&, juce::Rectangle<int> picture) const;
    void paintFlags (juce::Graphics&, const Layout&) const;
    void paintNotice (juce::Graphics&) const;

    CPlatterdex& engine;
    const int deckIndex;
    const DeckCommands commands;
    std::vector<Column> columns;
    std::vector<Flag> flags;
    int playheadX = -1; ///< -1 without a track
    juce::StringArray shownNotice;
    bool quietNotice = false;
};

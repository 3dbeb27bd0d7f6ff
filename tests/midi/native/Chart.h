#pragma once

#include <juce_core/juce_core.h>

#include <vector>

/** A row of a device's chart. */
struct ChartRow
{
    static constexpr int byTurns = -1; ///< a lamp that is switched on and off to blink

    bool isInput = false;
    int status = 0, data = 0;
    juce::String kind, deck, control; ///< as the chart calls them
    juce::String form;                ///< the way of the values
    int off = 0, on = 0;              ///< of a lamp: dark or lowest, lit or highest
    int blink = byTurns;              ///< of a lamp: what it is sent to blink
    juce::String unused;              ///< the reason why the driver has nothing for it; empty if it has

    /** 0 to 3, of a row that names a deck, else -1. */
    int deckIndex() const { return deck.length() == 1 ? juce::String ("ABCD").indexOf (deck) : -1; }

    /** The function's name without lamps and layers: "play" of "led play (layer 2)". */
    juce::String function() const
    {
        auto name = control.startsWith ("led ") ? control.substring (4) : control;
        return name.upToFirstOccurrenceOf (" (", false, false).trim();
    }

    /** The part of the device that a row belongs to, whatever is done with it: "encoder 1" of "led ring encoder 1" and of
        "encoder 1 turn". */
    juce::String part() const
    {
        return function()
            .replace ("ring ", "")
            .replace ("red dot ", "")
            .upToFirstOccurrenceOf (" turn", false, false)
            .upToFirstOccurrenceOf (" push", false, false)
            .upToFirstOccurrenceOf (" absolute", false, false)
            .upToFirstOccurrenceOf (" light ", false, false);
    }

    juce::String title() const
    {
        return juce::String (isInput ? "in " : "out ") + juce::String::toHexString (status) + " "
               + juce::String (data) + " " + deck + " " + control;
    }
};

/** The chart of a model; empty if there is none. */
inline std::vector<ChartRow> readChart (int model)
{
    std::vector<ChartRow> rows;
    juce::StringArray lines;
    juce::File (PX_CHARTS).getChildFile (juce::String (model).paddedLeft ('0', 2) + ".csv").readLines (lines);
    for (int i = 1; i < lines.size(); ++i)
    {
        juce::StringArray f;
        f.addTokens (lines[i], ",", "");
        if (f.size() >= 11)
            rows.push_back ({ f[0] == "in", f[1].getHexValue32(), f[2].getIntValue(), f[3], f[4], f[5], f[6],
                              f[7].getIntValue(), f[8].getIntValue(),
                              f[9].isEmpty() ? ChartRow::byTurns : f[9].getIntValue(), f[10] });
    }
    return rows;
}

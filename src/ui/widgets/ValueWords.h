#pragma once

#include <juce_core/juce_core.h>

#include <functional>
#include <optional>

class DeckWatch;

/** The words of a slider's value: how a field shows it, and what may be typed into the field. */
struct ValueWords
{
    std::function<juce::String (double value)> text;

    /** @returns the value, which may lie outside the slider's range; nothing for a text without a number */
    std::function<std::optional<double> (const juce::String& typed)> value;

    bool isEmpty() const noexcept { return text == nullptr; }

    /** The channel's gain: "-3.0 dB". A value of 0.5 is 0 dB; the least one is silence. */
    static ValueWords decibels();

    /** The key's tuning over two octaves: "-3.00 st". */
    static ValueWords semitones();

    /** A pitch fader whose lower end is the fast one: "+1.25 %". Takes percent, or the tempo that shall be heard: "126.5",
        "126.5 bpm". A number without a unit is a tempo from 30 on. */
    static ValueWords pitch (DeckWatch);

    /** A track's tempo in BPM: "126.50". */
    static ValueWords tempo();

    /** A share of the range: "50.0 %". */
    static ValueWords share();
};

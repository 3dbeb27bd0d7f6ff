#pragma once

#include "support/music/HarmonicFit.h"

#include <optional>
#include <string>
#include <string_view>

/** Names of keys, as tags and other programs write them, and their order. Keys are numbered as in HarmonicFit.h. */
namespace KeyName
{
/** The hour of the wheel, 1 to 12, that a key shares with its relative: 8 for C major and A minor. */
constexpr int wheelHour (int key)
{
    return (Fit::placeOnCircle (key) + 7) % 12 + 1;
}

/** Reads "8A" and "08a" (the wheel), "Am", "a min", "F# minor", "Bb", "Eb maj". @returns nothing for any other text */
std::optional<int> read (std::string_view text);

/** A text by whose bytes names of keys sort around the circle of fifths, minor before its relative: 1A, 1B, 2A ... 12B.
    What is no key's name comes behind them by its bytes, nothing at all before. */
std::string sortText (std::string_view text);
}

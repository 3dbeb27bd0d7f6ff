#pragma once

#include <juce_core/juce_core.h>

/** Keys in words. They are 0 to 11 for C to B major, 12 to 23 for C to B minor, as the similarity library counts them. */
namespace KeyText
{
enum class Notation
{
    letters, ///< "C", "Am", "F#m"
    wheel    ///< "8B", "8A", "11A": the hours of the circle of fifths, A is minor
};

/** The name of the preference that says how keys are written, and the value for the wheel. */
inline constexpr const char *preference = "keyNotation", *wheelValue = "wheel";

/** The notation that a value of the preference means. */
Notation notationOf (const juce::String& value);

/** @returns nothing for no key */
juce::String of (int key, Notation);

/** The relation of another track's key to one: "same key", "relative key", "a fifth up", "3 fifths down", with ", other mode"
    where major meets minor; nothing if one is unknown. */
juce::String relation (int key, int other);
}

#pragma once

#include <juce_core/juce_core.h>

#include <array>
#include <cstdint>
#include <span>

/** Texts that a user reads, in the language in use; scripts/texts takes the English ones from the sources.

    Lookups run on any thread but the audio thread. A text that the language lacks is English. */

/** Marks a literal of a table that is translated where it is shown, by tr (row.caption). */
constexpr const char* N_ (const char* english) noexcept
{
    return english;
}

/** The text in the language in use. @param english   UTF-8; empty or null gives an empty text */
juce::String tr (const char* english);
juce::String tr (const juce::String& english);

/** "%1" to "%9" of a text replaced by `values`; what they hold is not looked at again. */
juce::String filledIn (const juce::String& text, std::span<const juce::String> values);

/** The text with its places filled in: tr ("%1 is not a folder.", path). Values are what juce::String is made of. */
template <typename... Values>
juce::String tr (const char* english, const Values&... values)
{
    const std::array<juce::String, sizeof...(Values)> texts { juce::String (values)... };
    return filledIn (tr (english), texts);
}

/** The form of a text that goes with a number, which isn't filled in. */
juce::String pluralForm (const char* one, const char* many, int64_t n);

/** The text with the number as "%1" and further values as "%2" on: trPlural ("%1 song", "%1 songs", count). */
template <typename... Values>
juce::String trPlural (const char* one, const char* many, int64_t n, const Values&... values)
{
    const std::array<juce::String, sizeof...(Values) + 1> texts { juce::String (n),
                                                                  juce::String (values)... };
    return filledIn (pluralForm (one, many, n), texts);
}

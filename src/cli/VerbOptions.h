#pragma once

#include <juce_core/juce_core.h>

#include <optional>
#include <span>

/** One option of a verb. */
struct VerbOption
{
    const char* name;  ///< "--rate"
    const char* value; ///< what stands for its value in the help, or null for an option without one
    const char* help;  ///< one line
};

/** The command line of a verb, sorted: "--name value", "--name=value", "--name" and the rest by its order. After "--"
    nothing is an option any more. */
class VerbOptions
{
public:
    /** A fault in the arguments is in error(). */
    VerbOptions (std::span<const VerbOption> known, const juce::StringArray& arguments);

    /** One sentence about the first unknown option, missing value or repetition, or empty. */
    const juce::String& error() const noexcept { return fault; }

    bool has (const char* name) const { return values.containsKey (name); }

    /** The value, or an empty string. */
    juce::String valueOf (const char* name) const { return values[name]; }

    /** The value as a whole number. @returns nothing, and sets error(), if it is none from lowest to highest; the default
        if the option isn't there */
    std::optional<juce::int64> wholeNumber (const char* name, juce::int64 byDefault, juce::int64 lowest,
                                            juce::int64 highest);

    /** The value as a file, seen from the current folder. */
    juce::File fileOf (const char* name) const;

    /** All words that are no options. */
    juce::StringArray positional;

private:
    juce::StringPairArray values { false };
    juce::String fault;
};

/** The text of a verb's --help. @param usage   "perform SET.txt --out FILE" */
juce::String helpText (const char* usage, const char* description, std::span<const VerbOption>);

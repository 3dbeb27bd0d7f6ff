#pragma once

#include <juce_core/juce_core.h>

#include <span>
#include <string_view>

/** The script files that come with the program: the commands' numbers, made from the table of commands while building, and of
    resources/scripts the rows of a controller's table and the example scripts. */
namespace ShippedScripts
{
struct File
{
    std::string_view name, text;
};

/** The ending of what scripts include. */
inline constexpr std::string_view headerEnding = ".h";

std::span<const File> all();

/** @returns null if no such file is shipped */
const File* find (std::string_view name);

/** Brings a folder's headers up to date and adds the examples that are missing; what a hand has changed in an example
    stays. @returns false if a file could not be written. Not on the audio thread */
bool install (const juce::File& folder);
}

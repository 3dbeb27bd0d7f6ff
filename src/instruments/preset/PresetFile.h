#pragma once

#include <juce_core/juce_core.h>

#include <optional>
#include <string>
#include <string_view>

/** Preset files on the disk. Any thread but the audio thread. */
namespace PresetFile
{
/** Reads a whole file. One that is too large for a preset is read only so far that its reader sees it.
    @returns nothing if it can't be read */
std::optional<std::string> read (const juce::File&);

/** The sentence for a file that read() can't read. */
std::string unreadable (const juce::File&);

/** Replaces a file in one step, and makes its folder. @returns a sentence if that failed, which leaves the old file, else "" */
std::string write (const juce::File&, std::string_view bytes);
}

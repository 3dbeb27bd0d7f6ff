#pragma once

#include "instruments/preset/PresetXml.h"

#include <juce_core/juce_core.h>

#include <optional>
#include <string>
#include <string_view>
#include <variant>

/** Preset files on the disk. Any thread but the audio thread. */
namespace PresetFile
{
/** True for a file, or a link to one: what else a folder may hold would give no end of bytes, or none for ever. */
bool isReadable (const juce::File&);

/** Reads a whole file. One that is too large for a preset is read only so far that its reader sees it.
    @returns nothing if it can't be read */
std::optional<std::string> read (const juce::File&);

/** The sentence for a file that read() can't read. */
std::string unreadable (const juce::File&);

/** Reads a preset of any kind, which is named after its file if it has no name of its own.
    @param readBytes   takes any bytes; gives the preset, or a fault (see PresetXml)
    @param take        called with the preset
    @returns a sentence for the user if there is none, else "" */
template <typename Preset, typename Take>
std::string load (const juce::File& file, std::variant<Preset, std::string> (*readBytes) (std::string_view),
                  Take&& take)
{
    const auto bytes = read (file);
    if (!bytes)
        return unreadable (file);
    auto found = readBytes (*bytes);
    if (const auto* fault = std::get_if<std::string> (&found))
        return PresetXml::sentence (file.getFileName().toStdString(), *fault);
    auto& preset = std::get<Preset> (found);
    if (preset.name.empty())
        preset.name = file.getFileNameWithoutExtension().toStdString();
    take (preset);
    return {};
}

/** Replaces a file in one step, and makes its folder. @returns a sentence if that failed, which leaves the old file, else "" */
std::string write (const juce::File&, std::string_view bytes);
}

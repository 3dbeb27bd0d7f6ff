#pragma once

#include "settings/EngineSettings.h"
#include "settings/Folders.h"

#include <cstddef>
#include <span>
#include <vector>

/** The version that a settings file must have to be read. */
inline constexpr int32_t settingsVersion = 2250;

/** Lays the bytes of a settings file over `settings`, which holds defaults before.

    The bytes are the version as a little-endian int32 and the block. Another version changes nothing, bytes that are
    missing at the end leave the rest as it is, bytes beyond the block are ignored. What the engine could not use comes
    back as its default: values outside the ranges of levels, positions and mixes (0 to 1), the list's font size and the
    decks' set-up, and every number that is not finite. Never fails. */
void readSettings (std::span<const std::byte> file, EngineSettings& settings);

/** The length of a settings file that this program writes. */
inline constexpr size_t settingsFileBytes = sizeof (int32_t) + sizeof (EngineSettings);

/** The bytes of a settings file. */
std::vector<std::byte> writeSettings (const EngineSettings&);

/** The same into memory of settingsFileBytes, while audio runs: under the callback lock, which the texts need. */
void writeSettings (const EngineSettings&, std::span<std::byte> file) noexcept;

/** Changes the crossfader in bytes of writeSettings() to a place, 0 to 1, at which no fade moves it. */
void setRestingCrossfader (std::span<std::byte> file, double place) noexcept;

/** Fills the settings with the defaults for `folders`, then with "platterdex.set" of the set-up folder.
    Only while no audio runs. @returns true on a first run, that is if the file could not be opened. */
bool loadSettings (EngineSettings&, const juce::File& setupFolder, const Folders&);

/** Replaces "platterdex.set" in the set-up folder. Only while no audio runs.
    @returns false if that failed, which leaves the old file as it was; nobody needs to be told. */
bool saveSettings (const EngineSettings&, const juce::File& setupFolder);

/** The same with bytes from writeSettings(). Any thread but the audio thread. */
bool saveSettings (std::span<const std::byte> file, const juce::File& setupFolder);

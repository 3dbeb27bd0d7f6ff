#include "settings/SettingsFile.h"

#include "support/AudioThread.h"
#include "support/files/ReplaceFile.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

// The block is copied as it lies in memory.
static_assert (std::endian::native == std::endian::little);

namespace
{
constexpr size_t versionBytes = sizeof (int32_t);

juce::File settingsFile (const juce::File& setupFolder)
{
    return setupFolder.getChildFile ("platterdex.set");
}

template <typename T>
void keepWithin (Relaxed<T>& value, T low, T high, T otherwise)
{
    // Written so that a NaN is outside.
    if (!(value.get() >= low && value.get() <= high))
        value = otherwise;
}

template <typename T>
void keepFinite (Relaxed<T>& value, T otherwise)
{
    if (!std::isfinite (value.get()))
        value = otherwise;
    else if (std::fpclassify (value.get()) == FP_SUBNORMAL)
        value = T { 0 };
}

/** Keeps a level, a position or a mix: 0 to 1. */
void keepShare (Relaxed<double>& value, double otherwise)
{
    keepFinite (value, otherwise);
    keepWithin (value, 0.0, 1.0, otherwise);
}

void repair (DeckSetup& setup, const DeckSetup& defaults)
{
    for (auto* value : { &setup.timecodeCalibration, &setup.lineGain })
    {
        keepFinite (*value, 1.0);
        keepWithin (*value, 0.0, 4.0, 1.0);
    }
    keepFinite (setup.timecodeThreshold, defaults.timecodeThreshold.get());
    keepWithin (setup.timecodeThreshold, 0.0f, 1.0f, defaults.timecodeThreshold.get());
    keepFinite (setup.timecodeLeadIn, defaults.timecodeLeadIn.get());
    keepFinite (setup.timecodeGain, 0.0f);
    keepWithin (setup.timecodeGain, -24.0f, 48.0f, 0.0f);
    keepWithin<int8_t> (setup.timecodeType, 0, 17, defaults.timecodeType);
    keepWithin<int8_t> (setup.inputPair, 0, 3, defaults.inputPair);
}

void repair (EngineSettings& settings)
{
    const EngineSettings defaults;
    keepShare (settings.masterVolume, 1.0);
    if (settings.masterVolume == 0.0)
        settings.masterVolume = 1.0;
    keepShare (settings.crossfader, defaults.crossfader);
    keepShare (settings.crossfaderCurve, defaults.crossfaderCurve);
    keepShare (settings.monitorMix, defaults.monitorMix);
    keepShare (settings.monitorVolume, defaults.monitorVolume);
    keepWithin<int8_t> (settings.editor[EditorPreference::listFontSize], 12, 22, 16);
    for (auto& level : settings.samplerLevels)
        keepShare (level, 1.0);
    for (size_t deck = 0; deck < settings.deckSetup.size(); ++deck)
        repair (settings.deckSetup[deck], defaults.deckSetup[deck]);
}
}

void readSettings (std::span<const std::byte> file, EngineSettings& settings)
{
    int32_t version = 0;
    if (file.size() < versionBytes)
        return;
    std::memcpy (&version, file.data(), versionBytes);
    if (version != settingsVersion)
        return;

    const auto block = file.subspan (versionBytes, std::min (file.size(), settingsFileBytes) - versionBytes);
    std::memcpy (static_cast<void*> (&settings), block.data(), block.size());
    repair (settings);
}

std::vector<std::byte> writeSettings (const EngineSettings& settings)
{
    std::vector<std::byte> file (settingsFileBytes);
    writeSettings (settings, file);
    return file;
}

void writeSettings (const EngineSettings& settings, std::span<std::byte> file) noexcept
{
    // Word by word, since other threads write the Relaxed fields meanwhile; none of them lies across two words.
    using Word = uint64_t __attribute__ ((may_alias));
    static_assert (sizeof settings % sizeof (Word) == 0 && alignof (EngineSettings) >= alignof (Word));
    const auto* words = reinterpret_cast<const Word*> (&settings);
    std::memcpy (file.data(), &settingsVersion, versionBytes);
    for (size_t i = 0; i < sizeof settings / sizeof (Word); ++i)
    {
        const auto word = __atomic_load_n (words + i, __ATOMIC_RELAXED);
        std::memcpy (file.data() + versionBytes + i * sizeof word, &word, sizeof word);
    }
}

void setRestingCrossfader (std::span<std::byte> file, double place) noexcept
{
    const auto idle = EngineSettings().autoFadeState.get();
    std::memcpy (&file[versionBytes + offsetof (EngineSettings, crossfader)], &place, sizeof place);
    std::memcpy (&file[versionBytes + offsetof (EngineSettings, autoFadeState)], &idle, sizeof idle);
}

bool loadSettings (EngineSettings& settings, const juce::File& setupFolder, const Folders& folders)
{
    assertMayBlock();
    settings = defaultSettings (folders);
    juce::FileInputStream stream (settingsFile (setupFolder));
    if (stream.failedToOpen())
        return true;

    std::vector<std::byte> file (settingsFileBytes);
    const auto got = stream.read (file.data(), static_cast<int> (file.size()));
    file.resize (static_cast<size_t> (std::max (got, 0)));
    readSettings (file, settings);
    return false;
}

bool saveSettings (const EngineSettings& settings, const juce::File& setupFolder)
{
    return saveSettings (writeSettings (settings), setupFolder);
}

bool saveSettings (std::span<const std::byte> file, const juce::File& setupFolder)
{
    assertMayBlock();
    return setupFolder.createDirectory().wasOk()
           && replaceFile (settingsFile (setupFolder), file.data(), file.size());
}

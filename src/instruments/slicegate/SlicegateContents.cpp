#include "instruments/slicegate/SlicegateDeckState.h"

#include "instruments/preset/PresetFile.h"

// The contents of a deck's pads: what the message thread changes and everybody reads.

std::string SlicegateDeckState::padName (int pad) const
{
    if (!isPad (pad))
        return {};
    const std::lock_guard lock (naming);
    return at (pad).name;
}

void SlicegateDeckState::setPadName (int pad, std::string name)
{
    if (!isPad (pad))
        return;
    const std::lock_guard lock (naming);
    at (pad).name.swap (name);
    at (pad).revision = at (pad).revision + 1;
}

PlayMode SlicegateDeckState::playMode (int pad) const noexcept
{
    return isPad (pad) ? static_cast<PlayMode> (at (pad).playMode.get()) : PlayMode::oneShot;
}

void SlicegateDeckState::setPlayMode (int pad, PlayMode mode) noexcept
{
    if (!isPad (pad))
        return;
    at (pad).playMode = static_cast<int8_t> (mode);
    at (pad).revision = at (pad).revision + 1;
}

bool SlicegateDeckState::advanceMode (int pad) const noexcept
{
    return !isPad (pad) || at (pad).advanceMode != 0;
}

void SlicegateDeckState::setAdvanceMode (int pad, bool on) noexcept
{
    if (!isPad (pad))
        return;
    at (pad).advanceMode = on ? 1 : 0;
    at (pad).revision = at (pad).revision + 1;
}

void SlicegateDeckState::load (int pad, const SlicegatePreset& next)
{
    if (!isPad (pad))
        return;
    times.replace (pad, next.time.envelope);
    volumes.replace (pad, next.volume.envelope);
    if (!next.keepsFlags)
    {
        times.setVisible (pad, next.time.visible);
        times.setEnabled (pad, next.time.enabled);
        volumes.setVisible (pad, next.volume.visible);
        volumes.setEnabled (pad, next.volume.enabled);
    }
    if (next.playMode)
        setPlayMode (pad, *next.playMode);
    if (next.rolling)
        setAdvanceMode (pad, *next.rolling);
    setPadName (pad, next.name);
}

SlicegatePreset SlicegateDeckState::preset (int pad) const
{
    if (!isPad (pad))
        return {};
    return { .name = padName (pad),
             .time = { times.copy (pad), times.isVisible (pad), times.isEnabled (pad) },
             .volume = { volumes.copy (pad), volumes.isVisible (pad), volumes.isEnabled (pad) },
             .playMode = playMode (pad),
             .rolling = advanceMode (pad) };
}

void SlicegateDeckState::loadFactoryPreset (int presetId, int pad)
{
    load (pad, FactoryPresets::preset (presetId));
}

std::uint32_t SlicegateDeckState::revision (int pad) const noexcept
{
    return isPad (pad) ? at (pad).revision + times.revision (pad) + volumes.revision (pad) : 0;
}

std::string SlicegateDeckState::importPreset (const juce::File& file, int pad)
{
    return PresetFile::load (file, &readSlicegatePreset,
                             [this, pad] (const SlicegatePreset& read) { load (pad, read); });
}

std::string SlicegateDeckState::exportPreset (const juce::File& file, int pad) const
{
    auto written = preset (pad);
    if (written.name.empty() || written.name == FactoryPresets::nameOf (FactoryPresets::emptyPreset))
        written.name = file.getFileNameWithoutExtension().toStdString();
    return PresetFile::write (file, writeSlicegatePreset (written));
}

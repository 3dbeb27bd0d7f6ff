#include "offline/HostPosition.h"

#include <cmath>

void HostPosition::takeStock() noexcept
{
    anchorBeats += playedSeconds() * bpm / 60.0;
    anchorSeconds += playedSeconds();
    framesSince = 0;
}

void HostPosition::setBpm (double newBpm) noexcept
{
    takeStock();
    bpm = newBpm;
}

void HostPosition::seek (double seconds) noexcept
{
    anchorSeconds = seconds;
    anchorBeats = seconds * bpm / 60.0;
    framesSince = 0;
}

void HostPosition::advance (int frames) noexcept
{
    if (isPlaying)
        framesSince += frames;
}

juce::Optional<juce::AudioPlayHead::PositionInfo> HostPosition::getPosition() const
{
    const auto seconds = anchorSeconds + playedSeconds();
    PositionInfo info;
    info.setIsPlaying (isPlaying);
    info.setBpm (bpm);
    info.setTimeSignature (TimeSignature { 4, 4 });
    info.setTimeInSeconds (seconds);
    info.setTimeInSamples (std::llround (seconds * sampleRate));
    info.setPpqPosition (anchorBeats + playedSeconds() * bpm / 60.0);
    return info;
}

#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

/** The transport of a host that exists in an offline run only: stopped at 0 s and 120 BPM at first, in 4/4.

    One thread, the one that renders. */
class HostPosition : public juce::AudioPlayHead
{
public:
    explicit HostPosition (double rate) noexcept : sampleRate (rate) {}

    void play() noexcept { isPlaying = true; }
    void stop() noexcept { isPlaying = false; }

    /** From here on; what has been played keeps its beats. @param newBpm   above 0 */
    void setBpm (double newBpm) noexcept;

    /** @param seconds   0 or more; the beats are counted as if the tempo had always been what it is now */
    void seek (double seconds) noexcept;

    /** Goes on by what was rendered, if it plays. */
    void advance (int frames) noexcept;

    juce::Optional<PositionInfo> getPosition() const override;

private:
    void takeStock() noexcept;
    double playedSeconds() const noexcept { return static_cast<double> (framesSince) / sampleRate; }

    const double sampleRate;
    double bpm = 120.0;
    bool isPlaying = false;

    // Counted in frames from the last jump, so that hours of blocks don't add up their rounding.
    double anchorSeconds = 0.0, anchorBeats = 0.0;
    int64_t framesSince = 0;
};

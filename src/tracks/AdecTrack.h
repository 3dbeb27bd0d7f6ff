#pragma once

#include "tracks/AdecSharedLibrary.h"

#include <functional>
#include <span>

/** An open file of the decoder library with its chosen stream: of several audio streams the last one. Everything is given
    back at the end. One thread, never the audio thread. */
class AdecTrack
{
public:
    /** @param library   must live as long */
    AdecTrack (const AdecSharedLibrary& library, const juce::File&);
    ~AdecTrack();
    AdecTrack (const AdecTrack&) = delete;
    AdecTrack& operator= (const AdecTrack&) = delete;

    /** Above any converter's. A header that states more lies, and asks for absurd amounts of memory. */
    static constexpr double highestRate = 384'000.0;

    /** True if there is a stream of one or two channels at a rate up to highestRate whose samples are of a known format. */
    bool isPlayable() const noexcept;

    double sampleRate() const noexcept { return chosen.sampleRate; } ///< Hz
    int channels() const noexcept { return chosen.channels; }
    int sampleFormat() const noexcept { return chosen.sampleFormat; } ///< a SampleFormat

    /** The most frames that a sink gets at once. */
    size_t mostFrames() const noexcept;

    /** Takes interleaved samples, aligned for every format. @returns false to end the decoding */
    using Sink = std::function<bool (std::span<const std::byte>)>;

    /** Decodes to the end of the file; only if the track is playable. What is damaged is left out. */
    void decode (const Sink&);

    /** Decodes the next packet; only if the track is playable. @returns false at the end, or once the sink has ended it */
    bool decodeNext (const Sink&);

private:
    void chooseStream (int32_t index);
    bool decodePacket (const AdecPacketRecord&, const Sink&);

    const AdecSharedLibrary& adec;
    AdecFile* file = nullptr;
    AdecStream* stream = nullptr;
    int32_t streamIndex = -1;
    AdecStreamRecord chosen {};
    int32_t bufferSize = 0;
    std::byte* buffer = nullptr;
};

#include "engine/HostTransport.h"

#include <cmath>

namespace
{
/** Hosts round what they tell; what differs by more from the time that has passed is a jump. */
constexpr double jumpSeconds = 0.005;
}

void HostTransport::update (juce::AudioPlayHead* playHead, double blockSeconds)
{
    const auto before = *this;
    *this = {};

    const auto found = playHead != nullptr ? playHead->getPosition() : juce::nullopt;
    if (found.hasValue())
    {
        isPlaying = found->getIsPlaying();
        const auto time = found->getTimeInSeconds();
        hasTime = time.hasValue() && std::isfinite (*time);
        timeInSeconds = hasTime ? *time : 0.0;
        if (const auto tempo = found->getBpm().orFallback (defaultBpm); std::isfinite (tempo) && tempo > 0.0)
            bpm = tempo;
        if (const auto ppq = found->getPpqPosition(); ppq.hasValue() && std::isfinite (*ppq))
            beats = *ppq;
        if (const auto signature = found->getTimeSignature(); signature.hasValue())
        {
            timeSigNumerator = signature->numerator;
            timeSigDenominator = signature->denominator;
        }
    }
    nextSeconds = timeInSeconds + (isPlaying ? blockSeconds : 0.0);

    // A time that stands still is no jump: such a host does not count.
    const auto jumped = hasTime && before.hasTime
                        && std::abs (timeInSeconds - before.nextSeconds) > jumpSeconds
                        && timeInSeconds != before.timeInSeconds;
    hasRestarted = isPlaying && (!before.isPlaying || jumped);
}

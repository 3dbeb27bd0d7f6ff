#include "engine/HostTransport.h"

#include <cmath>

void HostTransport::update (juce::AudioPlayHead* playHead)
{
    const auto wasPlaying = isPlaying;
    *this = {};

    const auto found = playHead != nullptr ? playHead->getPosition() : juce::nullopt;
    if (found.hasValue())
    {
        isPlaying = found->getIsPlaying();
        timeInSeconds = found->getTimeInSeconds().orFallback (0.0);
        if (const auto tempo = found->getBpm().orFallback (defaultBpm); std::isfinite (tempo) && tempo > 0.0)
            bpm = tempo;
        if (const auto signature = found->getTimeSignature(); signature.hasValue())
        {
            timeSigNumerator = signature->numerator;
            timeSigDenominator = signature->denominator;
        }
    }
    hasRestarted = isPlaying && !wasPlaying;
}

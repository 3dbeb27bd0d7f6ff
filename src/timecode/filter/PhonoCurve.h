#pragma once

#include "support/AudioThread.h"

#include <array>
#include <cmath>

/** Replay curve of the RIAA (3,180, 318 and 75 microseconds) on two channels, or its inverse: a disc player at a phono
    input has been through one too many. 1 at 1 kHz. Audio thread; allocates nothing. */
class PhonoCurve
{
public:
    enum class Kind
    {
        none,
        replay,
        inverse
    };

    void prepare (double sampleRate) noexcept
    {
        for (std::size_t i = 0; i < poles.size(); ++i)
            poles[i] = static_cast<float> (std::exp (-1 / (seconds[i] * sampleRate)));
        reset();
    }

    PX_AUDIO_THREAD void reset() noexcept { channels = {}; }

    PX_AUDIO_THREAD float process (Kind kind, int channel, float sample) noexcept
    {
        auto& memory = channels[static_cast<std::size_t> (channel)];
        const bool isReplay = kind == Kind::replay;
        // Running means, and what undoes them.
        const auto first = step (isReplay, poles[0], memory[0], sample);
        const auto second = step (!isReplay, poles[1], memory[1], first);
        const auto third = step (isReplay, poles[2], memory[2], second);
        return third * (isReplay ? gainAtOneKilohertz : 1 / gainAtOneKilohertz);
    }

private:
    PX_AUDIO_THREAD static float step (bool isMean, float pole, float& memory, float sample) noexcept
    {
        const auto before = memory;
        if (isMean)
            return memory = pole * before + (1 - pole) * sample;
        memory = sample;
        return (sample - pole * before) / (1 - pole);
    }

    static constexpr std::array seconds { 3180e-6, 318e-6, 75e-6 };
    static constexpr float gainAtOneKilohertz = 9.9f;

    std::array<float, 3> poles {};
    std::array<std::array<float, 3>, 2> channels {};
};

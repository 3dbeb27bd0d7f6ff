#pragma once

#include "demo/Filter.h"

#include <array>
#include <vector>

struct StereoSample
{
    double left = 0.0, right = 0.0;
};

/** A ping-pong delay whose echoes grow darker. */
class Echo
{
public:
    Echo (int delayFrames, double sampleRate);
    StereoSample process (StereoSample in) noexcept;

private:
    std::vector<float> left, right;
    size_t position = 0;
    Filter leftTone, rightTone;
};

/** A small room: eight damped delay lines that feed each other through a Householder matrix. */
class Room
{
public:
    /** @param seconds   reverberation time to -60 dB */
    Room (double seconds, double sampleRate);
    StereoSample process (StereoSample in) noexcept;

private:
    struct Line
    {
        std::vector<float> memory;
        size_t position = 0;
        double gain = 0.0, damped = 0.0;
    };

    std::array<Line, 8> lines;
    Filter leftCut, rightCut;
};

#pragma once

#include <span>
#include <vector>

/** The level below 100 Hz over time. Takes the signal at the low rate of Decimator. One thread. */
class CBassIntensity
{
public:
    static constexpr double cutoffHz = 100.0;
    static constexpr double smoothingSeconds = 0.08;
    static constexpr int hop = 64; ///< frames of the low rate per value

    void prepare (double rateOfInput);
    void process (std::span<const float>);

    /** Mean power of the last smoothingSeconds, one value per hop. */
    std::span<const float> intensity() const { return made; }

    /** The rise of the bass from just before a place to just after it, in decibels; 0 where it is not heard.
        @param place   in frames of the low rate */
    double riseAt (double place) const;

private:
    float b0 = 0, b1 = 0, b2 = 0, a1 = 0, a2 = 0, z1 = 0, z2 = 0; // low pass, transposed direct form
    float keep = 0, power = 0;
    int filled = 0;
    double rate = 1.0;
    std::vector<float> made;
};

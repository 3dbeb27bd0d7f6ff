#pragma once

#include <array>
#include <cstdint>

/** The classic decoder of the system's own control disc: speed from zero crossings, position from bursts.

    Decks use TimecodeDecoder, which stands more noise; this one is the definition that the disc was made by, kept to
    compare with. Audio thread; allocates nothing. */
class CDTracker
{
public:
    virtual ~CDTracker() = default;

    /** Hz; 0 stands for no rate and counts in samples. */
    virtual void setSampleRate (double newRate) noexcept;

    /** Seconds of the disc, smoothed. */
    virtual double getPosition() const noexcept { return position; }

    /** 1 is nominal, below 0 backwards. */
    virtual double getSpeed() const noexcept { return speed; }

    /** Reads count frames.
        @param speedOut     one speed a frame, drawn by 0.001 towards the decoded position
        @param positionOut  one a frame: seconds, where a frame was decoded over 5 ms away, else -1 */
    virtual void process (const float* left, const float* right, double* speedOut, double* positionOut,
                          int count) noexcept;

    virtual void reserved() noexcept {}

    /** Decoded position minus the smoothed, seconds. */
    virtual double getPositionError() const noexcept { return positionError; }

    virtual bool isSignalLost() const noexcept { return envelope == 0; }

    /** Floor of the signal, linear. */
    virtual void setThreshold (float newThreshold) noexcept { threshold = newThreshold; }

private:
    void crossed (float left, float right, bool rising, double& positionOut) noexcept;
    void readCycle (double start, double period, float amplitude, int direction,
                    double& positionOut) noexcept;
    void takeSymbol (int symbol, int direction, double& positionOut) noexcept;
    void loseFrame() noexcept;

    std::array<double, 5> crossingTimes {};
    std::array<float, 256> ringLeft {}, ringResidual {}, ringRight {};
    int ringIndex = 0;
    double sampleRate = 44100, samplePeriod = 1.0 / 44100, sampleCount = 0, speed = 0;
    float lastLeft = 0, lastRight = 0;
    bool awaitingSync = true;
    int bitCount = 0, shiftRegister = 0, frame = -2, previousFrame = -2;
    double decodedPosition = 0, position = 0, positionError = 0;
    float envelopeDecay = 10.0f / 44100, envelope = 0, threshold = 0.01f;
};

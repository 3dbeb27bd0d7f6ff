#pragma once

#include <array>
#include <complex>
#include <string>

/** A control signal's figures over a fifth of a second, and what is wrong with it in words.

    Level, hum and clipping are measured here; what only a decoder knows (cables, noise, the code) comes from the one that
    reads the signal. Pure and cheap: a handful of sums a frame. Any thread, one at a time. */
class InputDiagnosis
{
public:
    enum class Finding
    {
        nothingYet,
        noSignal,
        leftMissing,
        rightMissing,
        hum,
        clipped,
        mono,
        phonoLevel,
        levelLow,
        swapped,
        leftInverted,
        rightInverted,
        noisy,
        unknownCode,
        good
    };

    /** The signal as its decoder sees it. */
    struct Decoded
    {
        bool hasSignal = false;    ///< a carrier turns
        bool isPlaceKnown = false; ///< its code is read
        bool isForeign = false;    ///< it has turned for long without any known code
        bool isExchanged = false, isLeftInverted = false,
             isRightInverted = false; ///< wiring, if the place is known
        float noise = 0;              ///< level against the carrier's
        float quality = 0;    ///< share of the code's bits that were as foretold, if the place is known
        float peak = 0;       ///< of the carrier at nominal speed, full scale 1; 0 before one was heard
        double carrierHz = 0; ///< now
    };

    struct Report
    {
        Finding finding = Finding::nothingYet;
        float levelDb = -120; ///< peak of the carrier, of full scale
        int humHz = 50;       ///< 50 or 60
        int carrierHz = 0;    ///< of a foreign carrier
        float quality = 0;    ///< 0 to 1: of the code where it is read, else of the carrier

        bool operator== (const Report&) const = default;
    };

    /** Begins anew. @param isRecord   played by a needle, so that a level may be a cartridge's own */
    void prepare (double sampleRate, bool isRecord) noexcept;

    void add (float left, float right) noexcept;

    /** As of the last whole fifth of a second. */
    Report report (const Decoded&) const noexcept;

private:
    /** One frequency of both channels: hum is alike in both, a carrier that turns as slowly is not. */
    struct Tone
    {
        std::complex<double> turn, step, left, right;
        void prepare (double hz, double rate) noexcept;
        void add (double leftSample, double rightSample) noexcept;
        double commonPower (int frames) const noexcept;
    };

    struct Sums
    {
        int frames = 0, clipped = 0;
        double left = 0, right = 0, leftSquares = 0, rightSquares = 0, products = 0;
    };

    /** Measures of a whole fifth of a second; powers are mean squares without DC. */
    struct Measured
    {
        bool isThere = false, isClipped = false;
        bool isLine = false; ///< both channels are one signal
        double left = 0, right = 0;
        double humPower = 0;
        int humHz = 50;
    };

    void measure() noexcept;

    double rate = 44100;
    bool record = true;
    int framesPerReport = 8820;
    Sums now;
    std::array<Tone, 4> tones; // 50, 60, 150, 180 Hz
    Measured last, before;
};

/** A report as the user reads it, such as "no ground: hum at 50 Hz". */
std::string inputWords (const InputDiagnosis::Report&);

#pragma once

#include <array>
#include <string>

/** A control signal's figures over a tenth of a second or more, and what is wrong with it in words.

    Pure and cheap: a handful of sums a frame. Any thread, one at a time. */
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
        noisy,
        good
    };

    struct Report
    {
        Finding finding = Finding::nothingYet;
        float levelDb = -120; ///< peak of the carrier, of full scale
        int humHz = 50;       ///< 50 or 60
        float quality = 0;    ///< 0 to 1: how steady the circle is that both channels draw

        bool operator== (const Report&) const = default;
    };

    /** Begins anew. @param isRecord   played by a needle, so that a level may be a cartridge's own */
    void prepare (double sampleRate, bool isRecord) noexcept;

    /** Takes in a frame.
        @returns true once a report is due, five times a second */
    bool add (float left, float right) noexcept;

    const Report& report() const noexcept { return last; }

private:
    struct Tone
    {
        double turn = 0, cosine = 1, sine = 0; ///< an oscillator
        double stepCosine = 1, stepSine = 0;
        double real = 0, imaginary = 0;
        void prepare (double hz, double rate) noexcept;
        void add (double sample) noexcept;
        void reset() noexcept { real = imaginary = 0; }
        double power (int frames) const noexcept;
    };

    void judge() noexcept;

    struct Sums
    {
        int frames = 0, clipped = 0;
        double left = 0, right = 0, leftSquares = 0, rightSquares = 0, products = 0;
        double radius = 0, radiusSquares = 0; ///< of the channels made equally loud
    };

    double rate = 44100;
    bool record = true;
    int framesPerReport = 8820;
    Sums now;
    double leftScale = 1, rightScale = 1, leftMean = 0, rightMean = 0; // of the report before
    std::array<Tone, 4> tones; // 50, 60, 150, 180 Hz, of both channels' sum
    Report last;
};

/** A report as the user reads it, such as "no ground: hum at 50 Hz". */
std::string inputWords (const InputDiagnosis::Report&);

#include "timecode/deckmode/InputDiagnosis.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{
constexpr double reportSeconds = 0.2; // whole periods of 50 and of 60 Hz
constexpr float clipFrom = 0.985f;
constexpr double silenceDb = -60, missingDb = 20, phonoBelowDb = -39, lowBelowDb = -30;
constexpr double clippedShare = 0.01, humShare = 0.2, monoFrom = 0.9, noisyBelow = 0.6;

double decibels (double meanSquare) noexcept
{
    return 10 * std::log10 (std::max (meanSquare, 1.0e-14));
}
}

void InputDiagnosis::Tone::prepare (double hz, double sampleRate) noexcept
{
    turn = 2 * std::numbers::pi * hz / sampleRate;
    stepCosine = std::cos (turn);
    stepSine = std::sin (turn);
    cosine = 1;
    sine = 0;
    reset();
}

void InputDiagnosis::Tone::add (double sample) noexcept
{
    real += sample * cosine;
    imaginary += sample * sine;
    const auto nextCosine = cosine * stepCosine - sine * stepSine;
    sine = sine * stepCosine + cosine * stepSine;
    cosine = nextCosine;
}

double InputDiagnosis::Tone::power (int frames) const noexcept
{
    return 2 * (real * real + imaginary * imaginary) / (static_cast<double> (frames) * frames);
}

void InputDiagnosis::prepare (double sampleRate, bool isRecord) noexcept
{
    *this = {};
    rate = sampleRate;
    record = isRecord;
    framesPerReport = std::max (1, static_cast<int> (std::lround (reportSeconds * rate)));
    constexpr std::array hertz { 50.0, 60.0, 150.0, 180.0 };
    for (std::size_t i = 0; i < tones.size(); ++i)
        tones[i].prepare (hertz[i], rate);
}

bool InputDiagnosis::add (float left, float right) noexcept
{
    if (!std::isfinite (left) || !std::isfinite (right))
        left = right = 0;
    const auto l = static_cast<double> (left), r = static_cast<double> (right);
    ++now.frames;
    now.clipped += std::abs (left) > clipFrom || std::abs (right) > clipFrom;
    now.left += l;
    now.right += r;
    now.leftSquares += l * l;
    now.rightSquares += r * r;
    now.products += l * r;
    const auto x = (l - leftMean) * leftScale, y = (r - rightMean) * rightScale;
    const auto squared = x * x + y * y;
    now.radius += std::sqrt (squared);
    now.radiusSquares += squared;
    for (auto& tone : tones)
        tone.add (0.5 * (l + r));
    if (now.frames < framesPerReport)
        return false;
    judge();
    return true;
}

void InputDiagnosis::judge() noexcept
{
    const auto n = static_cast<double> (now.frames);
    leftMean = now.left / n;
    rightMean = now.right / n;
    const auto left = std::max (0.0, now.leftSquares / n - leftMean * leftMean),
               right = std::max (0.0, now.rightSquares / n - rightMean * rightMean);
    const auto product = now.products / n - leftMean * rightMean;
    const auto louder = std::max (left, right);
    const auto hum50 = tones[0].power (now.frames) + tones[2].power (now.frames),
               hum60 = tones[1].power (now.frames) + tones[3].power (now.frames);
    const auto meanRadius = now.radius / n;
    const auto spread = std::max (0.0, now.radiusSquares / n - meanRadius * meanRadius);

    last.levelDb = static_cast<float> (decibels (2 * louder));
    last.humHz = hum50 >= hum60 ? 50 : 60;
    last.quality = meanRadius > 0
                       ? static_cast<float> (std::clamp (1 - 2 * std::sqrt (spread) / meanRadius, 0.0, 1.0))
                       : 0;

    const auto level = static_cast<double> (last.levelDb);
    const auto correlation = left * right > 0 ? product / std::sqrt (left * right) : 0.0;
    const auto isFirst = leftScale == 1 && rightScale == 1;
    using enum Finding;
    if (level < silenceDb)
        last.finding = noSignal;
    else if (std::max (hum50, hum60) > humShare * 0.5 * (left + right))
        last.finding = hum;
    else if (decibels (left) < decibels (right) - missingDb)
        last.finding = leftMissing;
    else if (decibels (right) < decibels (left) - missingDb)
        last.finding = rightMissing;
    else if (now.clipped > clippedShare * n)
        last.finding = clipped;
    else if (std::abs (correlation) > monoFrom)
        last.finding = mono;
    else if (level < phonoBelowDb && record)
        last.finding = phonoLevel;
    else if (level < lowBelowDb)
        last.finding = levelLow;
    else if (!isFirst && static_cast<double> (last.quality) < noisyBelow)
        last.finding = noisy;
    else
        last.finding = good;

    // The next circle is drawn by this one's measures.
    leftScale = left > 0 ? 1 / std::sqrt (left) : 2;
    rightScale = right > 0 ? 1 / std::sqrt (right) : 2;
    now = {};
    for (auto& tone : tones)
        tone.reset();
}

std::string inputWords (const InputDiagnosis::Report& report)
{
    const auto level = std::to_string (static_cast<int> (std::lround (report.levelDb))) + " dB";
    using enum InputDiagnosis::Finding;
    switch (report.finding)
    {
    case nothingYet:
        return {};
    case noSignal:
        return "no signal";
    case leftMissing:
        return "left channel missing";
    case rightMissing:
        return "right channel missing";
    case hum:
        return "no ground: hum at " + std::to_string (report.humHz) + " Hz";
    case clipped:
        return "input clips: turn the level down";
    case mono:
        return "both channels are the same";
    case phonoLevel:
        return "phono level at a line input";
    case levelLow:
        return "level low: " + level;
    case noisy:
        return "noisy signal: clean needle and record";
    case good:
        return "good signal";
    }
    return {};
}

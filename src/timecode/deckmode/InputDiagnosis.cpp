#include "timecode/deckmode/InputDiagnosis.h"

#include "support/language/Translate.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace
{
constexpr double reportSeconds = 0.2; // whole periods of 50 and of 60 Hz
constexpr float clipFrom = 0.985f;
constexpr double silenceDb = -60, unheardDb = -42, restBelowCarrierDb = 12;
constexpr double missingDb = 20, phonoBelowDb = -39, lowBelowDb = -30;
constexpr double clippedShare = 0.01, monoFrom = 0.9;
constexpr double humShare = 0.016;                    // of the carrier's power: -18 dB
constexpr double loneHumShare = 0.5, loneHumDb = -40; // with no carrier to compare with
constexpr float noisyRecord = 0.095f,
                noisyDisc = 0.17f; // between a club's deck and -20 dB; bursts add theirs
constexpr double slowHz = 300;     // a carrier that could be hum itself
constexpr float worthlessNoise = 0.3f;

double decibels (double meanSquare) noexcept
{
    return 10 * std::log10 (std::max (meanSquare, 1.0e-14));
}
}

void InputDiagnosis::Tone::prepare (double hz, double sampleRate) noexcept
{
    turn = 1;
    step = std::polar (1.0, 2 * std::numbers::pi * hz / sampleRate);
    left = right = 0;
}

void InputDiagnosis::Tone::add (double leftSample, double rightSample) noexcept
{
    left += leftSample * turn;
    right += rightSample * turn;
    turn *= step;
}

double InputDiagnosis::Tone::commonPower (int frames) const noexcept
{
    const auto common = (left * std::conj (right)).real();
    return 2 * std::max (0.0, common) / (static_cast<double> (frames) * frames);
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

void InputDiagnosis::add (float left, float right) noexcept
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
    for (auto& tone : tones)
        tone.add (l, r);
    if (now.frames >= framesPerReport)
        measure();
}

void InputDiagnosis::measure() noexcept
{
    const auto n = static_cast<double> (now.frames);
    const auto leftMean = now.left / n, rightMean = now.right / n;
    before = std::exchange (last, {});
    last.isThere = true;
    last.left = std::max (0.0, now.leftSquares / n - leftMean * leftMean);
    last.right = std::max (0.0, now.rightSquares / n - rightMean * rightMean);
    const auto product = now.products / n - leftMean * rightMean;
    last.isLine = std::abs (product) > monoFrom * std::sqrt (last.left * last.right);
    last.isClipped = now.clipped > clippedShare * n;
    const auto hum50 = tones[0].commonPower (now.frames) + tones[2].commonPower (now.frames),
               hum60 = tones[1].commonPower (now.frames) + tones[3].commonPower (now.frames);
    last.humPower = std::max (hum50, hum60);
    last.humHz = hum50 >= hum60 ? 50 : 60;
    now = {};
    for (auto& tone : tones)
        tone.left = tone.right = 0;
}

InputDiagnosis::Report InputDiagnosis::report (const Decoded& decoded) const noexcept
{
    Report now;
    if (!last.isThere)
        return now;
    const auto louder = std::max (last.left, last.right);
    const auto heardDb = decibels (2 * louder);
    // A record's level falls with its speed: where the carrier was heard, its level at nominal speed counts.
    const auto carrierPower = 0.5 * static_cast<double> (decoded.peak) * static_cast<double> (decoded.peak);
    const auto level = carrierPower > 0 ? decibels (2 * carrierPower) : heardDb;
    now.levelDb = static_cast<float> (level);
    now.humHz = last.humHz;
    now.carrierHz = static_cast<int> (std::lround (decoded.carrierHz));
    now.quality =
        decoded.isPlaceKnown ? decoded.quality : std::max (0.0f, 1 - decoded.noise / worthlessNoise);

    const bool isHeard = carrierPower > 0;
    const bool rests = !decoded.hasSignal && heardDb < (isHeard ? level - restBelowCarrierDb : unheardDb);
    // A hand that stops the record passes through all of this: only what lasts is a fault.
    const auto lasts = [this] (auto is) { return is (last) && before.isThere && is (before); };
    const bool hums =
        !(decoded.hasSignal && decoded.carrierHz < slowHz)
        && lasts (
            [&] (const Measured& m)
            {
                const auto all = 0.5 * (m.left + m.right);
                return isHeard ? m.humPower > humShare * std::max (carrierPower, all)
                               : m.humPower > loneHumShare * all && decibels (2 * m.humPower) > loneHumDb;
            });
    const auto isMissing = [&] (auto missing, auto other)
    {
        return lasts ([&] (const Measured& m)
                      { return decibels (m.*missing) < decibels (m.*other) - missingDb; });
    };
    const bool isNoisy = decoded.hasSignal && decoded.noise > (record ? noisyRecord : noisyDisc);
    using enum Finding;
    if (heardDb < silenceDb || (rests && !hums))
        now.finding = noSignal;
    else if (hums)
        now.finding = hum;
    else if (isMissing (&Measured::left, &Measured::right))
        now.finding = leftMissing;
    else if (isMissing (&Measured::right, &Measured::left))
        now.finding = rightMissing;
    else if (last.isClipped)
        now.finding = clipped;
    else if (lasts ([] (const Measured& m) { return m.isLine; }))
        now.finding = mono;
    else if (level < phonoBelowDb && record)
        now.finding = phonoLevel;
    else if (level < lowBelowDb)
        now.finding = levelLow;
    else if (decoded.isPlaceKnown && decoded.isExchanged)
        now.finding = swapped;
    else if (decoded.isPlaceKnown && decoded.isLeftInverted != decoded.isRightInverted)
        now.finding = decoded.isLeftInverted ? leftInverted : rightInverted;
    else if (isNoisy)
        now.finding = noisy;
    else if (decoded.isForeign)
        now.finding = unknownCode;
    else
        now.finding = decoded.hasSignal ? good : noSignal;
    return now;
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
        return tr ("no signal").toStdString();
    case leftMissing:
        return tr ("left channel missing").toStdString();
    case rightMissing:
        return tr ("right channel missing").toStdString();
    case hum:
        return tr ("no ground: hum at %1 Hz", report.humHz).toStdString();
    case clipped:
        return tr ("input clips: turn the level down").toStdString();
    case mono:
        return tr ("both channels are the same").toStdString();
    case phonoLevel:
        return tr ("phono level at a line input").toStdString();
    case levelLow:
        return tr ("level low: %1", level).toStdString();
    case swapped:
        return tr ("channels swapped").toStdString();
    case leftInverted:
        return tr ("left channel inverted").toStdString();
    case rightInverted:
        return tr ("right channel inverted").toStdString();
    case noisy:
        return tr ("noisy signal: clean needle and record").toStdString();
    case unknownCode:
        return tr ("a carrier of %1 Hz, no code known", report.carrierHz).toStdString();
    case good:
        return tr ("good signal").toStdString();
    }
    return {};
}

#include "RecordedDeck.h"
#include "SignalFaults.h"

#include "timecode/deckmode/MediumRecogniser.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace
{
using Speed = std::optional<double>;

const ControlMedium& medium (const char* id)
{
    return *findControlMedium (id);
}

/** All that is said of a signal, in order, once half a second was heard. */
std::vector<std::string> wordsFor (const ControlMedium& medium, const ControlSignal& signal)
{
    TimecodeDecoder decoder;
    decoder.prepare (medium, codeOf (medium), signal.rate);
    InputDiagnosis diagnosis;
    diagnosis.prepare (signal.rate, medium.levelFollowsSpeed);
    std::vector<std::string> said;
    for (size_t i = 0; i < signal.size(); ++i)
    {
        decoder.process (signal.left[i], signal.right[i]);
        diagnosis.add (signal.left[i], signal.right[i]);
        if (i < signal.at (0.5) || i % 2205 != 0)
            continue;
        const auto wired = decoder.wiring();
        const auto words =
            inputWords (diagnosis.report ({ .hasSignal = decoder.hasSignal(),
                                            .isPlaceKnown = decoder.isLocked(),
                                            .isExchanged = wired.exchanged,
                                            .isLeftInverted = wired.leftInverted,
                                            .isRightInverted = wired.rightInverted,
                                            .noise = decoder.noise(),
                                            .quality = decoder.quality(),
                                            .peak = decoder.level(),
                                            .carrierHz = std::abs (decoder.speed()) * medium.carrierHz }));
        if (said.empty() || said.back() != words)
            said.push_back (words);
    }
    return said;
}

/** Plays, is scratched, held, and lifted. */
Speed set (double t)
{
    if (t < 1.5)
        return 1.0;
    if (t < 3)
        return 2.5 * std::sin (2 * std::numbers::pi * 2 * (t - 1.5));
    return t < 3.5 ? Speed (0.0) : (t < 4.5 ? Speed (1.0) : Speed());
}

/** Feeds the deck, with somebody looking ten times a second. */
void listenTo (RecordedDeck& deck, const ControlSignal& signal)
{
    for (size_t done = 0; done < signal.size(); done += 4410)
    {
        ControlSignal piece;
        const auto end = std::min (signal.size(), done + 4410);
        piece.left.assign (signal.left.begin() + static_cast<std::ptrdiff_t> (done),
                           signal.left.begin() + static_cast<std::ptrdiff_t> (end));
        piece.right.assign (signal.right.begin() + static_cast<std::ptrdiff_t> (done),
                            signal.right.begin() + static_cast<std::ptrdiff_t> (end));
        piece.place.resize (piece.left.size());
        deck.feed (piece);
        deck.engine->timecodeListener.listen (0);
        deck.engine->timecodeListener.waitUntilIdle();
    }
}
}

TEST (InputDiagnosis, SaysInWordsWhatIsWrong)
{
    using Change = std::function<void (float&, float&)>;
    const auto scaled = [] (float l, float r)
    {
        return [l, r] (float& left, float& right)
        {
            left *= l;
            right *= r;
        };
    };
    const struct
    {
        SignalFaults faults;
        Change cables;
        std::string onDisc, onRecord;
    } table[] {
        { goodDeck, {}, "good signal", "good signal" },
        { clubDeck, {}, "good signal", "good signal" },
        { { .name = "level", .gainDb = -30 }, {}, "level low: -36 dB", "level low: -37 dB" },
        { { .name = "no phono stage", .noiseDb = -40, .rumbleDb = -20, .gainDb = -40 },
          {},
          "level low: -46 dB",
          "phono level at a line input" },
        { { .name = "hot", .gainDb = 12 },
          {},
          "input clips: turn the level down",
          "input clips: turn the level down" },
        { { .name = "noise", .noiseDb = -18 },
          {},
          "noisy signal: clean needle and record",
          "noisy signal: clean needle and record" },
        { { .name = "ground", .humDb = -14 }, {}, "no ground: hum at 50 Hz", "no ground: hum at 50 Hz" },
        { goodDeck, scaled (0.004f, 1), "left channel missing", "left channel missing" },
        { clubDeck, scaled (1, 0), "right channel missing", "right channel missing" },
        { goodDeck, [] (float& l, float& r) { l = r = 0.5f * (l + r); }, "both channels are the same",
          "both channels are the same" },
        { clubDeck, [] (float& l, float& r) { std::swap (l, r); }, "channels swapped", "channels swapped" },
        { goodDeck, scaled (-1, 1), "left channel inverted", "channels swapped" }, // a record looks the same
        { { .name = "nothing" }, scaled (0, 0), "no signal", "no signal" },
    };
    for (const auto* id : { "cd", "serato_2a" })
        for (const auto& [faults, cables, onDisc, onRecord] : table)
        {
            auto signal = play (medium (id), 10, 1.5, [] (double) { return Speed (1.0); });
            spoil (signal, faults, 3);
            if (cables)
                change (signal, [&] (float& left, float& right, double) { cables (left, right); });
            const auto said = wordsFor (medium (id), signal);
            EXPECT_EQ (said.back(), medium (id).isOwnDisc() ? onDisc : onRecord) << id << ", " << faults.name;
        }
}

TEST (InputDiagnosis, FindsNoFaultOnDecksThatHaveNone)
{
    for (const auto* id : { "cd", "serato_2a", "traktor_b" })
        for (const auto& deck : { goodDeck, clubDeck })
        {
            auto signal = play (medium (id), 30, 6, set);
            spoil (signal, deck, 4);
            for (const auto& words : wordsFor (medium (id), signal))
                EXPECT_TRUE (words == "good signal" || words == "no signal") << id << ": " << words;
        }
}

TEST (MediumRecogniser, KnowsEveryMediumWithinTwoSeconds)
{
    for (const auto& each : controlMedia())
    {
        if (each.id == "mixvibes_7inch")
            continue; // the beginning of V2, which it can't be told from
        auto signal = play (each, 60, 2, [] (double) { return std::optional (1.0); });
        addNoise (signal, 0.002f);
        MediumRecogniser recogniser (signal.rate);
        for (size_t i = 0; i < signal.size() && recogniser.found() == nullptr; ++i)
            recogniser.process (signal.left[i], signal.right[i]);
        ASSERT_NE (recogniser.found(), nullptr) << each.id;
        EXPECT_EQ (recogniser.found()->id, each.id);
    }
}

TEST (TimecodeListener, FindsTheRecordThatTheDeckIsNotSetTo)
{
    RecordedDeck deck (medium ("cd"), TimecodeDeck::Mode::relative);
    const auto signal = play (medium ("traktor_a"), 60, 2, [] (double) { return std::optional (1.0); });
    listenTo (deck, signal);
    const auto picture = deck.engine->timecodeListener.picture (0);
    EXPECT_EQ (picture.foundBrand, timecodeBrandOf (medium ("traktor_a")));
    deck.timecode().setBrand (picture.foundBrand);
    deck.feed (play (medium ("traktor_a"), 60, 0.5, [] (double) { return std::optional (1.0); }));
    EXPECT_TRUE (deck.timecode().status().isPlaceKnown);
}

TEST (TimecodeListener, SaysTheCarrierOfARecordThatNobodyKnows)
{
    RecordedDeck deck (medium ("serato_2a"), TimecodeDeck::Mode::relative);
    auto signal = play (medium ("serato_2a"), 60, 4, [] (double) { return Speed (1.2); });
    for (size_t i = 0; i < signal.size(); ++i) // the carrier alone
    {
        const auto angle = 2 * std::numbers::pi * 1200 * static_cast<double> (i) / signal.rate;
        signal.left[i] = 0.5f * static_cast<float> (std::cos (angle));
        signal.right[i] = 0.5f * static_cast<float> (-std::sin (angle));
    }
    listenTo (deck, signal);
    EXPECT_EQ (inputWords (deck.engine->timecodeListener.picture (0).input),
               "a carrier of 1200 Hz, no code known");
}

TEST (ScopeImage, PlotsWhatLiesInItsFrameAndNothingElse)
{
    // The compiler evaluates it, which refuses numbers that no pixel can have.
    constexpr auto litBy = [] (float left, float right)
    {
        ScopeImage image;
        image.plot (left, right);
        int lit = 0;
        for (int i = 0; i < ScopeImage::side * ScopeImage::side; ++i)
            lit += image.at (i % ScopeImage::side, i / ScopeImage::side) != 0 ? 1 : 0;
        return lit;
    };
    using Limits = std::numeric_limits<float>;
    static_assert (litBy (0.0f, 0.0f) == 1 && litBy (1.0f, -1.0f) == 1 && litBy (-1.0f, 1.0f) == 1);
    static_assert (litBy (1.1f, 0.0f) == 0 && litBy (0.0f, -1.1f) == 0);
    static_assert (litBy (Limits::quiet_NaN(), 0.0f) == 0 && litBy (0.0f, Limits::quiet_NaN()) == 0);
    static_assert (litBy (Limits::infinity(), 0.0f) == 0 && litBy (0.0f, -Limits::infinity()) == 0);
    static_assert (litBy (1.0e30f, 0.0f) == 0 && litBy (0.0f, -1.0e30f) == 0);
}

#include "RecordedDeck.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <numeric>

namespace
{
using Mode = TimecodeDeck::Mode;
using Speed = std::optional<double>;
constexpr double tau = 2 * std::numbers::pi, rate = 44100;

const ControlMedium& disc()
{
    return controlMedia()[0];
}

const ControlMedium& record()
{
    return *findControlMedium ("serato_2a");
}

/** A steady second, two seconds of baby scratches up to three times nominal speed, and a second at rest. */
Speed scratch (double t)
{
    const auto grip = std::clamp (t < 2.0 ? (t - 1.0) * 20 : (3.0 - t) * 20, 0.0, 1.0);
    return (t < 1.05 ? 1.0 - grip : 0.0) + grip * std::cos (tau * 3 * t) * 3.0;
}

std::function<Speed (double)> steady (double speed)
{
    return [speed] (double) { return Speed (speed); };
}

double correlation (const std::vector<double>& a, const std::vector<double>& b)
{
    const auto product = [] (const auto& x, const auto& y)
    { return std::inner_product (x.begin(), x.end(), y.begin(), 0.0); };
    return product (a, b) / std::sqrt (product (a, a) * product (b, b) + 1e-30);
}

struct Likeness
{
    double low = 1, median = 0; ///< correlation over 20 ms: the worst tenth's best, and the middle one
    double farthest = 0;        ///< seconds between what is heard and the true place
};

/** Compares a deck's sound with the track resampled along the true way, piece by piece, each displaced as suits it best.
    @param delay  the decoder's, in frames */
Likeness likeness (const RecordedDeck& deck, const std::vector<float>& heard, const ControlSignal& truth,
                   int delay, double begin, double end)
{
    constexpr int piece = 882;
    Likeness all;
    std::vector<double> best;
    for (auto first = truth.at (begin); first + piece < truth.at (end); first += piece)
    {
        std::pair<double, double> found { -1, 0 };
        std::vector<double> sound (heard.begin() + static_cast<std::ptrdiff_t> (first),
                                   heard.begin() + static_cast<std::ptrdiff_t> (first) + piece);
        for (double offset = -0.0134; offset < 0.0134; offset += 0.00005)
        {
            std::vector<double> ideal;
            for (size_t i = first - delay; i < first - delay + piece; ++i)
            {
                const auto speed = 10 * (truth.place[i] - truth.place[i - 1]) * rate;
                ideal.push_back (deck.trackAt (truth.place[i] + offset) * speed
                                 / std::sqrt (1 + speed * speed));
            }
            found = std::max (found, std::pair { correlation (ideal, sound), offset });
        }
        best.push_back (found.first);
        all.farthest = std::max (all.farthest, std::abs (found.second));
    }
    std::ranges::sort (best);
    all.low = best[best.size() / 10];
    all.median = best[best.size() / 2];
    return all;
}
}

TEST (DeckMode, ScratchSoundsAsIfTheTrackWerePressedOnTheRecord)
{
    for (const auto* medium : { &disc(), &record() })
    {
        RecordedDeck deck (*medium, Mode::absolute);
        auto signal = play (*medium, 20, 4, scratch);
        addNoise (signal, 0.002f);
        const auto heard = deck.feed (signal);
        const auto delay = medium->isOwnDisc() ? 68 : 57;
        const auto [low, median, distance] = likeness (deck, heard, signal, delay, 1.0, 3.0);
        EXPECT_GT (low, 0.8) << medium->id;
        EXPECT_GT (median, 0.96) << medium->id;
        auto farthest = 0.0;
        for (size_t block = 60; block + 1 < deck.places.size(); ++block)
            farthest =
                std::max (farthest, std::abs (deck.places[block] - signal.place[(block + 1) * 128 - 1]));
        EXPECT_LT (farthest, 0.009) << medium->id;
        // At rest: no sound, no drift, and in the end where the record is.
        EXPECT_EQ (std::abs (heard.back()), 0.0f);
        EXPECT_EQ (deck.places.back(), deck.places[deck.places.size() - 100]);
        EXPECT_NEAR (deck.places.back(), signal.place.back(), 0.0134) << medium->id;
        RecordProperty (std::string (medium->id) + "_correlation",
                        std::to_string (median) + ", low " + std::to_string (low));
        RecordProperty (std::string (medium->id) + "_heard_ms", std::to_string (distance * 1000));
        RecordProperty (std::string (medium->id) + "_farthest_ms", std::to_string (farthest * 1000));
    }
}

TEST (DeckMode, SlowHandsMoveTheTrackWithoutADeadZone)
{
    RecordedDeck deck (record(), Mode::relative);
    // Turns through zero, after the carrier has been heard.
    const auto signal =
        play (record(), 30, 5,
              [] (double t) { return t < 1 ? Speed (1.0) : Speed (0.3 * std::cos (tau * (t - 1))); });
    deck.feed (signal);
    const auto moved = [&] (double from, double to)
    {
        const auto block = [] (double t) { return static_cast<size_t> (t * rate / 128); };
        return deck.places[block (to)] - deck.places[block (from)];
    };
    for (double t = 1.5; t < 4.4; t += 0.125)
        EXPECT_NEAR (moved (t, t + 0.125), signal.place[signal.at (t + 0.125)] - signal.place[signal.at (t)],
                     0.003)
            << t;
}

TEST (DeckMode, AbsoluteGoesWhereTheNeedleIsPutDown)
{
    RecordedDeck deck (record(), Mode::absolute);
    deck.feed (play (record(), 10, 1, steady (1)));
    EXPECT_NEAR (deck.places.back(), 11, 0.003);
    deck.feed (play (record(), 0, 0.3, [] (double) { return Speed(); }));
    deck.feed (play (record(), 42, 1, steady (1)));
    EXPECT_NEAR (deck.places.back(), 43, 0.003);
    deck.engine->transport.rewind (0); // a deck that was moved comes back
    deck.feed (play (record(), 43, 1, steady (1)));
    EXPECT_NEAR (deck.places.back(), 44, 0.003);
}

TEST (DeckMode, ASmallGapIsPulledShutWithoutAJump)
{
    RecordedDeck deck (disc(), Mode::absolute);
    const auto signal = play (disc(), 10, 8, steady (1));
    ControlSignal first = signal, rest = signal;
    const auto cut = signal.at (2);
    for (auto* side : { &first.left, &first.right })
        side->resize (cut);
    first.place.resize (cut);
    for (auto* side : { &rest.left, &rest.right })
        side->erase (side->begin(), side->begin() + static_cast<std::ptrdiff_t> (cut));
    rest.place.erase (rest.place.begin(), rest.place.begin() + static_cast<std::ptrdiff_t> (cut));
    deck.feed (first);
    deck.deck().head.position += 400; // 9 ms
    const auto begin = deck.places.size();
    deck.feed (rest);
    for (auto block = begin + 1; block + 1 < deck.places.size(); ++block)
        ASSERT_NEAR ((deck.places[block] - deck.places[block - 1]) * rate / 128, 1.0, 0.0035);
    EXPECT_NEAR (deck.places.back(), rest.place.back(), 0.001);
}

TEST (DeckMode, TheLeadInWaitsAndTheTrackBeginsOnItsSample)
{
    RecordedDeck deck (record(), Mode::absolute);
    deck.engine->settings.deckSetup[0].timecodeLeadIn = 2.0f;
    const auto heard = deck.feed (play (record(), 1, 2, steady (1)));
    EXPECT_EQ (deck.places[static_cast<size_t> (0.9 * rate / 128)], 0.0);
    for (auto i = static_cast<size_t> (0.1 * rate); i < 0.99 * rate; ++i) // once the place is known
        ASSERT_LT (std::abs (heard[i]), 1e-6f);
    EXPECT_NEAR (deck.places.back(), 1.0, 0.004);
}

TEST (DeckMode, TheEndZoneGivesTheDeckToItsOwnHand)
{
    for (const auto* medium : { &disc(), &record() })
    {
        RecordedDeck deck (*medium, Mode::absolute);
        const auto zone = static_cast<double> (medium->safeLength) / medium->carrierHz;
        deck.feed (play (*medium, 10, 0.5, steady (1)));
        deck.feed (play (*medium, zone - 0.5, 1.5, steady (1.1))); // played into
        EXPECT_EQ (deck.timecode().mode(), Mode::internal);
        EXPECT_TRUE (deck.timecode().status().isInControlZone);
        EXPECT_NEAR (deck.deck().tempo.pitch, 0.6, 0.01);
        deck.feed (play (*medium, 20, 1, steady (1)));
        EXPECT_EQ (deck.timecode().mode(), Mode::relative); // until the user selects otherwise
        EXPECT_FALSE (deck.timecode().status().isInControlZone);
    }
}

TEST (DeckMode, LearnsTheCarrierOfARecordWithoutAKnownCode)
{
    RecordedDeck deck (record(), Mode::relative);
    const auto& medium = *findControlMedium ("traktor_a"); // 2 kHz
    const auto generic = 8;
    deck.timecode().setBrand (generic);
    deck.feed (play (medium, 10, 0.5, steady (1)));
    deck.timecode().learn();
    deck.feed (play (medium, 10, 2.5, steady (1)));
    EXPECT_NEAR (deck.engine->settings.deckSetup[0].timecodeCalibration, 0.5, 0.001);
    deck.feed (play (medium, 10, 1, steady (1.3)));
    EXPECT_NEAR (deck.timecode().status().speed, 1.3, 0.005);
    deck.engine->settings.deckSetup[0].timecodeInvert = 1;
    deck.feed (play (medium, 10, 1, steady (1.3)));
    EXPECT_NEAR (deck.timecode().status().speed, -1.3, 0.005);
    deck.timecode().learn();
    deck.feed (play (medium, 10, 2.5, [] (double) { return Speed(); }));
    EXPECT_EQ (deck.engine->settings.deckSetup[0].timecodeCalibration, 1.0);
}

TEST (DeckMode, ADropoutDoesNotStopTheRecord)
{
    RecordedDeck deck (record(), Mode::relative);
    auto signal = play (record(), 10, 3, steady (1));
    change (signal,
            [] (float& left, float& right, double t)
            {
                if (t > 2.0 && t < 2.05)
                    left = right = 0;
            });
    deck.feed (signal);
    const auto at = [&] (double t) { return deck.places[static_cast<size_t> (t * rate / 128)]; };
    EXPECT_NEAR (at (2.5) - at (1.5), 1.0, 0.005);
}

TEST (DeckMode, ThruPlaysTheInputAndLetsTheRecordGo)
{
    RecordedDeck deck (record(), Mode::relative);
    deck.feed (play (record(), 10, 1, steady (1)));
    deck.timecode().setThru (true);
    const auto signal = play (record(), 10, 1, steady (1));
    const auto heard = deck.feed (signal);
    EXPECT_EQ (deck.timecode().mode(), Mode::internal);
    EXPECT_EQ (deck.deck().play.on, 0);
    EXPECT_GT (*std::max_element (heard.begin() + 20'000, heard.end()), 0.2f);
    deck.timecode().setMode (Mode::relative);
    EXPECT_FALSE (deck.timecode().isThru());
}

TEST (DeckMode, ThruInTheEndZoneLetsTheRecordGoForGood)
{
    RecordedDeck deck (disc(), Mode::relative);
    const auto zone = static_cast<double> (disc().safeLength) / disc().carrierHz;
    deck.feed (play (disc(), zone - 0.5, 1.5, steady (1)));
    ASSERT_TRUE (deck.timecode().status().isInControlZone);
    deck.timecode().setThru (true);
    EXPECT_EQ (deck.deck().play.on, 0);
    deck.feed (play (disc(), 20, 1, steady (1)));
    EXPECT_EQ (deck.timecode().mode(), Mode::internal) << "the record came back and took the deck";
    EXPECT_TRUE (deck.timecode().isThru());
}

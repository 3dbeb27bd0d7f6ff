#include "RecordedDeck.h"

#include "timecode/deckmode/MediumRecogniser.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace
{
std::string wordsFor (const ControlMedium& medium, const std::function<void (float&, float&, double)>& fault)
{
    auto signal = play (medium, 10, 1, [] (double) { return std::optional (1.0); });
    addNoise (signal, 0.0005f);
    change (signal, fault);
    InputDiagnosis diagnosis;
    diagnosis.prepare (signal.rate, medium.levelFollowsSpeed);
    for (size_t i = 0; i < signal.size(); ++i)
        diagnosis.add (signal.left[i], signal.right[i]);
    return inputWords (diagnosis.report());
}

const ControlMedium& medium (const char* id)
{
    return *findControlMedium (id);
}
}

TEST (InputDiagnosis, SaysInWordsWhatIsWrong)
{
    const auto scaled = [] (float gain)
    {
        return [gain] (float& left, float& right, double)
        {
            left *= gain;
            right *= gain;
        };
    };
    const auto hum = [] (double hz, float level)
    {
        return [hz, level] (float& left, float& right, double t)
        {
            const auto tone = level * static_cast<float> (std::sin (2 * std::numbers::pi * hz * t));
            left += tone;
            right += tone;
        };
    };
    for (const auto* id : { "cd", "serato_2a", "traktor_b" })
        EXPECT_EQ (wordsFor (medium (id), scaled (0.9f)), "good signal") << id;
    EXPECT_EQ (wordsFor (medium ("cd"), [] (float& left, float&, double) { left *= 0.01f; }),
               "left channel missing");
    EXPECT_EQ (wordsFor (medium ("cd"), [] (float&, float& right, double) { right = 0; }),
               "right channel missing");
    EXPECT_EQ (wordsFor (medium ("serato_2a"), hum (50, 0.4f)), "no ground: hum at 50 Hz");
    EXPECT_EQ (wordsFor (medium ("serato_2a"), hum (60, 0.4f)), "no ground: hum at 60 Hz");
    EXPECT_EQ (wordsFor (medium ("cd"), scaled (0.0236f)), "level low: -38 dB");
    EXPECT_EQ (wordsFor (medium ("serato_2a"), scaled (0.01f)), "phono level at a line input");
    EXPECT_EQ (wordsFor (medium ("cd"), scaled (0)), "no signal");
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
    const auto picture = deck.engine->timecodeListener.picture (0);
    EXPECT_EQ (picture.foundBrand, timecodeBrandOf (medium ("traktor_a")));
    deck.timecode().setBrand (picture.foundBrand);
    deck.feed (play (medium ("traktor_a"), 60, 0.5, [] (double) { return std::optional (1.0); }));
    EXPECT_TRUE (deck.timecode().status().isPlaceKnown);
}

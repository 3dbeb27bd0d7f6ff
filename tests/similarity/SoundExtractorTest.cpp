#include "Music.h"

#include <gtest/gtest.h>

namespace
{
constexpr double rate = 44100.0;

SimilarityDescription describeMusic (const Music::Style& style, double seconds = 10.0, double atRate = rate)
{
    return describe (*Music::hear (Music::make (style, seconds, atRate), atRate), style.bpm);
}
}

TEST (SoundExtractor, TheSameSongInAnotherDressIsNearerThanAnotherSong)
{
    const Music::Style style { .bpm = 124.0, .brightness = 0.5, .tonic = 2 };
    const auto song = describeMusic (style);
    auto nearestOther = 1e9f;
    for (const auto& other :
         { Music::Style { .bpm = 96.0, .brightness = 0.3, .tonic = 2 },
           Music::Style { .bpm = 124.0, .brightness = 0.9, .tonic = 7 },
           Music::Style { .bpm = 170.0, .brightness = 0.5, .tonic = 9, .isMinor = true } })
        nearestOther = std::min (nearestOther, distance (song, describeMusic (other)));

    auto soft = Music::make (style, 10.0, rate);
    for (auto& sample : soft)
        sample *= 0.25f;
    auto faster = style, slower = style;
    faster.speed = 1.06;
    slower.speed = 0.94;
    EXPECT_LT (distance (song, describe (*Music::hear (soft, rate), 124.0)), nearestOther) << "soft";
    EXPECT_LT (distance (song, describeMusic (faster)), nearestOther) << "6 % faster";
    EXPECT_LT (distance (song, describeMusic (slower)), nearestOther) << "6 % slower";
    EXPECT_LT (distance (song, describeMusic (style, 8.0)), nearestOther) << "a part of it";
    for (const auto otherRate : { 48000.0, 96000.0, 32000.0 })
        EXPECT_LT (distance (song, describeMusic (style, 10.0, otherRate)), nearestOther) << otherRate;
}

TEST (SoundExtractor, AllKeysAreFoundAtAnyTuningAndTurnWithThePitch)
{
    constexpr auto lowRate = 22050.0, seconds = 8.0;
    for (int key = 0; key < Tonality::keyCount; ++key)
    {
        const auto cents = 30.0 * (key % 3 - 1);
        const Music::Style style { .tonic = key % 12, .isMinor = key >= 12, .tuningCents = cents };
        const auto heard = Music::hear (Music::make (style, seconds, lowRate), lowRate);
        ASSERT_TRUE (heard);
        EXPECT_EQ (heard->tonality.key, key) << cents << " cents";
        EXPECT_NEAR (heard->tonality.tuningCents, cents, 8.0) << key;
    }
}

TEST (SoundExtractor, BlocksOfAnySizeGiveTheSame)
{
    const auto music = Music::make ({}, 8.0, rate);
    const auto whole = Music::hear (music, rate, music.size());
    for (const size_t block : { 1, 63, 4096, 16384 })
        EXPECT_EQ (Music::hear (music, rate, block)->whole, whole->whole) << block;
}

TEST (SoundExtractor, WhatIsNoSoundIsNotDescribed)
{
    EXPECT_FALSE (Music::hear ({}, rate));
    EXPECT_FALSE (Music::hear (std::vector<float> (44100 * 10), rate)) << "silence";
    EXPECT_FALSE (Music::hear (std::vector<float> (44100 * 10, 0.5f), rate)) << "a constant";
    EXPECT_FALSE (Music::hear (Music::make ({}, 2.0, rate), rate)) << "too short";

    // Numbers that are none leave no trace in the bytes.
    auto music = Music::make ({}, 6.0, rate);
    music[1000] = std::numeric_limits<float>::quiet_NaN();
    music[50000] = std::numeric_limits<float>::infinity();
    music[60000] = -1e30f;
    const auto heard = Music::hear (music, rate);
    ASSERT_TRUE (heard);
    for (const auto value : heard->whole)
        EXPECT_TRUE (std::isfinite (value));
    EXPECT_TRUE (isUsable (describe (*heard, 0.0)));
}

#include "ViewBench.h"

#include "ui/deckviews/scope/DeckPeakScope.h"
#include "ui/deckviews/scope/PeakColumns.h"

#include <numeric>

TEST (PeakColumns, HoldTheExtremesOfBothSides)
{
    ViewBench bench;
    bench.putTrack (ViewBench::noise (20'000));
    auto& deck = bench.deck();
    for (int i = 0; i < 20'000; ++i)
        deck.audioMemory.right()[i] = static_cast<int16_t> (-deck.audioMemory.left()[i] / 2 + 100);
    for (const auto zoom : { 0.5, 1.0, 3.2, 64.0 })
        for (const auto column : { 0, 1, 17, 250 })
        {
            auto inTrack = false;
            const auto peaks = PeakColumns { zoom }.of (deck.audioMemory, 20'000, column, inTrack);
            int most = -40'000, least = 40'000;
            for (auto i = static_cast<int> (column * zoom); i <= static_cast<int> ((column + 1) * zoom); ++i)
                for (const int sample : { deck.audioMemory.left()[i], deck.audioMemory.right()[i] })
                {
                    most = std::max (most, sample);
                    least = std::min (least, sample);
                }
            EXPECT_TRUE (inTrack);
            EXPECT_EQ (peaks.most, most) << zoom << ", " << column;
            EXPECT_EQ (peaks.least, least);
        }
    for (const auto outside : { int64_t { -1 }, int64_t { 313 } })
    {
        auto inTrack = true;
        PeakColumns { 64.0 }.of (deck.audioMemory, 20'000, outside, inTrack);
        EXPECT_FALSE (inTrack);
    }
}

TEST (DeckPeakScope, AScrolledPictureIsTheOneThatIsDrawnAnewAtAnyZoom)
{
    ViewBench bench;
    bench.putTrack (ViewBench::noise (300'000));
    const auto make = [&] (int zoom)
    {
        auto scope = std::make_unique<DeckPeakScope> (bench.engine, 0);
        scope->setSize (216, 64);
        scope->setVisible (true);
        scope->setSamplesPerPixel (zoom);
        return scope;
    };
    auto scope = make (1);
    for (const auto zoom : { 1, 32, 512 })
        for (const auto scale : { 1.0, 1.5, 2.0 })
        {
            scope->setSamplesPerPixel (zoom);
            ViewBench::picture (*scope, scale);
            for (const auto step : { 1000, 5000, -2000, 100'000, -70'000 })
            {
                bench.engine.transport.seekFrames (0, bench.deck().head.position + step);
                scope->refresh();
                ASSERT_TRUE (ViewBench::same (ViewBench::picture (*scope, scale),
                                              ViewBench::picture (*make (zoom), scale)))
                    << zoom << ", " << scale << ", " << step;
            }
        }
}

TEST (DeckPeakScope, TheWheelZoomsWithinItsLimits)
{
    ViewBench bench;
    DeckPeakScope scope (bench.engine, 0);
    scope.setSize (216, 64);
    const auto event = ViewBench::event (scope, { 9.0f, 9.0f }, { 9.0f, 9.0f });
    const auto turn = [&] (float travel, int times)
    {
        for (int i = 0; i < times; ++i)
            scope.mouseWheelMove (event, { 0.0f, travel, false, false, false });
        return scope.samplesPerPixel();
    };
    EXPECT_EQ (turn (0.5f, 1), 16);
    EXPECT_EQ (turn (-0.5f, 1), 32);
    EXPECT_EQ (turn (-0.03f, 4), 64) << "the small moves of a pad add up";
    EXPECT_EQ (turn (-0.5f, 20), DeckPeakScope::mostSamplesPerPixel);
    EXPECT_EQ (turn (0.5f, 20), DeckPeakScope::leastSamplesPerPixel);
}

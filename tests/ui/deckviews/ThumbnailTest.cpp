#include "ViewBench.h"

#include "ui/deckviews/DeckWaveformThumbnail.h"
#include "ui/deckviews/ThumbnailColumns.h"

namespace
{
struct View : DeckWaveformThumbnail
{
    explicit View (ViewBench& bench) : DeckWaveformThumbnail (bench.engine, 0)
    {
        setSize (400, 40);
        setVisible (true);
    }
};
}

TEST (ThumbnailColumns, HoldTheExtremesOfWhatTheyCover)
{
    auto overview = std::make_unique<TrackOverview>();
    for (size_t e = 0; e < 5000; ++e)
    {
        overview->overviewMax[e] = static_cast<int8_t> (e * 37 % 31);
        overview->overviewMin[e] = static_cast<int8_t> (-static_cast<int> (e * 53 % 32));
    }
    for (const auto& [frames, width] :
         { std::pair (5000 * 512, 300), { 5000 * 512 - 77, 1265 }, { 9000, 400 }, { 1, 7 } })
    {
        const auto columns = ThumbnailColumns::of (*overview, frames, frames, width);
        ASSERT_EQ (columns.most.size(), static_cast<size_t> (width) + 1);
        for (int x = 0; x < width; ++x)
        {
            const auto first = static_cast<int64_t> (x) * frames / width / 512;
            const auto next =
                std::min<int64_t> (static_cast<int64_t> (x + 1) * frames / width / 512, (frames - 1) / 512);
            int most = 0, least = 0;
            for (auto e = first; e < std::max (first + 1, next); ++e)
            {
                most = std::max<int> (most, overview->overviewMax[static_cast<size_t> (e)]);
                least = std::min<int> (least, overview->overviewMin[static_cast<size_t> (e)]);
            }
            ASSERT_EQ (columns.most[static_cast<size_t> (x)], most) << x;
            ASSERT_EQ (columns.least[static_cast<size_t> (x)], least) << x;
        }
    }
}

TEST (Thumbnail, IsBuiltForATrackOrASizeAndNotForAMove)
{
    ViewBench bench;
    bench.putTrack (ViewBench::noise (500'000));
    View view (bench);
    const auto buildsAfter = [&] (const std::function<void()>& change)
    {
        const auto before = view.builds();
        change();
        view.refresh();
        ViewBench::picture (view);
        return view.builds() - before;
    };
    EXPECT_EQ (buildsAfter ([] {}), 1);
    EXPECT_EQ (buildsAfter ([&] { bench.engine.transport.seekFrames (0, 250'000.0); }), 0);
    EXPECT_EQ (buildsAfter ([&] { bench.deck().marks.cues[1] = 1000.0; }), 0);
    EXPECT_EQ (buildsAfter ([&] { view.setSize (300, 40); }), 1);
    EXPECT_EQ (buildsAfter ([&] { bench.putTrack (ViewBench::noise (400'000)); }), 1);
    bench.engine.listeners.post (EngineEvent::trackLoaded, 0);
    EXPECT_EQ (buildsAfter ([&] { bench.engine.deliverMessages(); }), 1)
        << "another track of the same length";
    EXPECT_EQ (buildsAfter ([] {}), 0);
}

TEST (Thumbnail, AClickSeeksToItsShareOfTheTrackAndADragOnlyWithShift)
{
    ViewBench bench;
    bench.putTrack (ViewBench::noise (500'000));
    View view (bench);
    const auto share = [&] { return bench.deck().head.position / bench.deck().track.loadedFrames; };
    const juce::Point from (100.0f, 20.0f);
    view.mouseDown (ViewBench::event (view, from, from));
    view.mouseUp (ViewBench::event (view, from, from));
    EXPECT_NEAR (share(), 0.25, 1e-6);
    constexpr int shiftDrag = juce::ModifierKeys::leftButtonModifier | juce::ModifierKeys::shiftModifier;
    constexpr int plainDrag = juce::ModifierKeys::leftButtonModifier;
    for (const auto modifiers : { plainDrag, shiftDrag })
    {
        view.mouseDown (ViewBench::event (view, from, from, 0, modifiers));
        for (const auto& [x, expected] :
             { std::pair (300.0f, 0.75), { -20.0f, 0.0 }, { 900.0f, 1.0 }, { 200.0f, 0.5 } })
        {
            view.mouseDrag (ViewBench::event (view, from, { x, 20.0f }, 0, modifiers));
            EXPECT_NEAR (share(), modifiers == shiftDrag ? expected : 0.25, 1e-6);
        }
        view.mouseUp (ViewBench::event (view, from, { 200.0f, 20.0f }, 0, modifiers));
        EXPECT_NEAR (share(), modifiers == shiftDrag ? 0.5 : 0.25, 1e-6);
    }
    view.mouseDown (ViewBench::event (view, from, from, 0, juce::ModifierKeys::rightButtonModifier));
    view.mouseUp (ViewBench::event (view, from, from, 0, juce::ModifierKeys::rightButtonModifier));
    EXPECT_NEAR (share(), 0.5, 1e-6);
}

TEST (Thumbnail, ATrackThatLoadsIsLaidOutByItsStatedLength)
{
    ViewBench bench;
    bench.putTrack (std::vector<int16_t> (200'000, 20'000));
    bench.deck().isLoading = 1;
    bench.deck().track.statedFrames = 400'000;
    View view (bench);
    const auto brightnessAt = [&] (int x)
    { return ViewBench::picture (view).getPixelAt (x, 15).getPerceivedBrightness(); };
    EXPECT_GT (brightnessAt (198), 0.3f);
    EXPECT_LT (brightnessAt (203), 0.2f) << "is still to come";

    const auto seek = [&] (float x)
    {
        view.mouseDown (ViewBench::event (view, { x, 20.0f }, { x, 20.0f }));
        view.mouseUp (ViewBench::event (view, { x, 20.0f }, { x, 20.0f }));
        return bench.deck().head.position;
    };
    EXPECT_NEAR (seek (100.0f), 100'000.0, 1.0);
    EXPECT_NEAR (seek (300.0f), 100'000.0, 1.0) << "nothing is there yet";

    // The header was wrong: the track's own length counts in the end.
    bench.deck().isLoading = 0;
    view.refresh();
    EXPECT_GT (brightnessAt (390), 0.3f);
    EXPECT_NEAR (seek (300.0f), 150'000.0, 1.0);
}

TEST (Thumbnail, WhatHasBeenPlayedIsDim)
{
    ViewBench bench;
    bench.putTrack (std::vector<int16_t> (400'000, 20'000));
    bench.engine.transport.seekFrames (0, 200'000.0);
    View view (bench);
    const auto image = ViewBench::picture (view);
    const auto played = image.getPixelAt (100, 15), ahead = image.getPixelAt (300, 15);
    EXPECT_LT (played.getPerceivedBrightness(), 0.65f * ahead.getPerceivedBrightness());
    EXPECT_EQ (image.getPixelAt (300, 30), image.getPixelAt (100, 30).withAlpha (1.0f))
        << "below the middle there is nothing";
}

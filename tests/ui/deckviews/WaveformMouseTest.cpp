#include "ViewBench.h"

#include "ui/deckviews/DeckWaveform.h"
#include "ui/deckviews/scope/DeckPeakScope.h"

namespace
{
constexpr float middle = 200.0f;

struct View : DeckWaveform
{
    explicit View (ViewBench& bench) : DeckWaveform (bench.engine, 0)
    {
        setSize (400, 239);
        setVisible (true);
    }

    void beginTrackDrag (const juce::Image& picture) override
    {
        ++drags;
        dragPicture = picture;
    }

    int drags = 0;
    juce::Image dragPicture;
};

/** Drags a view by `pixels` within 400 ms, while the engine runs. @returns how far the heard place moved, in columns */
double drag (ViewBench& bench, juce::Component& view, float y, float pixels, int eventsPerSecond)
{
    const auto before = bench.deck().heardPosition();
    const auto from = juce::Point (middle, y);
    view.mouseDown (ViewBench::event (view, from, from));
    const auto events = eventsPerSecond * 2 / 5;
    int rendered = 0;
    for (int i = 1; i <= events; ++i)
    {
        const auto ms = i * 400 / events;
        const auto at = from.translated (pixels * static_cast<float> (i) / static_cast<float> (events), 0.0f);
        view.mouseDrag (ViewBench::event (view, from, at, ms));
        for (; rendered < ms / 10; ++rendered)
            bench.render (1);
    }
    const auto moved = bench.deck().heardPosition() - before;
    const auto end = from.translated (pixels, 0.0f);
    view.mouseUp (ViewBench::event (view, from, end, 400));
    return moved / framesPerOverviewEntry;
}
}

TEST (WaveformMouse, ARowDecidesWhatAPressMeans)
{
    struct Case
    {
        float x, y, dragTo;
        int keys;
        bool scratches, drags, turnsTime;
    };
    constexpr auto left = juce::ModifierKeys::leftButtonModifier,
                   right = juce::ModifierKeys::rightButtonModifier;
    const Case cases[] {
        { middle, 48, 0, left, true, false, false },       { middle, 190, 0, left, true, false, false },
        { middle, 191, 0, left, false, false, false },     { middle, 100, 30, left, true, false, false },
        { middle, 100, 0, right, false, false, false },    { middle, 20, 0, right, false, false, false },
        { middle, 20, 0, left, false, false, true },       { middle, 47, 0, left, false, false, true },
        { middle + 60, 20, 0, left, false, false, true },  { middle + 61, 20, 0, left, false, false, false },
        { middle - 61, 20, 0, left, false, false, false }, { middle, 20, 30, left, false, true, false },
        { 30, 46, 30, left, false, true, false },          { 30, 47, 30, left, false, false, false },
    };
    for (const auto& c : cases)
    {
        ViewBench bench;
        bench.putTrack (ViewBench::noise (100'000));
        View view (bench);
        const auto time = view.time();
        const juce::Point from (c.x, c.y);
        view.mouseDown (ViewBench::event (view, from, from, 0, c.keys));
        EXPECT_EQ (bench.deck().jog.scratchOn == 1, c.scratches) << c.x << ", " << c.y;
        for (int i = 1; i <= 3 && c.dragTo > 0.0f; ++i)
            view.mouseDrag (ViewBench::event (view, from, from.translated (c.dragTo, 0.0f), 10 * i, c.keys));
        EXPECT_EQ (view.drags, c.drags ? 1 : 0) << c.x << ", " << c.y;
        view.mouseUp (ViewBench::event (view, from, from.translated (c.dragTo, 0.0f), 99, c.keys));
        EXPECT_EQ (bench.deck().jog.scratchOn, 0);
        EXPECT_EQ (bench.deck().jog.scratchEnded == 1, c.scratches);
        EXPECT_EQ (view.time() != time, c.turnsTime) << c.x << ", " << c.y;
        if (c.drags)
        {
            EXPECT_EQ (view.dragPicture.getHeight(), 22);
        }
    }
}

TEST (WaveformMouse, TheTimeIsThePositionOrWhatRemains)
{
    ViewBench bench;
    View view (bench);
    EXPECT_EQ (view.time(), "--:--.-");
    bench.putTrack (std::vector<int16_t> (static_cast<size_t> (ViewBench::rate * 200.0), 1));
    bench.engine.transport.seekFrames (0, 65.37 * ViewBench::rate);
    view.refresh();
    EXPECT_EQ (view.time(), "01:05.3");
    const auto click = ViewBench::event (view, { middle, 20.0f }, { middle, 20.0f });
    view.mouseDown (click);
    view.mouseUp (click);
    EXPECT_EQ (view.time(), "-02:14.6");
}

TEST (WaveformMouse, ThePictureFollowsTheHand)
{
    for (const auto playing : { false, true })
        for (const auto pixels : { 80.0f, -80.0f, 200.0f })
        {
            const auto movedAt = [&] (int eventsPerSecond)
            {
                ViewBench bench;
                bench.putTrack (ViewBench::noise (900'000));
                View view (bench);
                bench.engine.transport.seekFrames (0, 400'000.0);
                if (playing)
                    bench.engine.transport.playPause (0);
                bench.render (20);
                const auto moved = drag (bench, view, 100.0f, pixels, eventsPerSecond);
                bench.render (200); // the hand has gone: what plays goes on, what stood stands
                EXPECT_EQ (bench.deck().jog.scratchEnded, 0);
                const auto at = bench.deck().head.position;
                bench.render (10);
                EXPECT_EQ (bench.deck().head.position > at, playing);
                return moved;
            };
            const auto usual = movedAt (125), fast = movedAt (1000);
            EXPECT_LT (usual * pixels, 0.0) << "to the right is back in the track";
            EXPECT_NEAR (-usual / pixels, 1.0, 0.15) << "a pixel of the hand is a pixel of the wave";
            EXPECT_NEAR (fast / usual, 1.0, 0.15) << "however often the mouse reports";
        }
}

TEST (WaveformMouse, AStandingHandHoldsThePlayingRecord)
{
    ViewBench bench;
    bench.putTrack (ViewBench::noise (900'000));
    View view (bench);
    bench.engine.transport.playPause (0);
    bench.render (30);
    view.mouseDown (ViewBench::event (view, { middle, 100.0f }, { middle, 100.0f }));
    bench.render (20);
    const auto held = bench.deck().heardPosition();
    bench.render (20);
    EXPECT_EQ (bench.deck().heardPosition(), held);
}

TEST (WaveformMouse, TheScopesPointerGoesBackAndItsEchoIsNoMove)
{
    ViewBench bench;
    bench.putTrack (ViewBench::noise (900'000));
    bench.engine.transport.seekFrames (0, 400'000.0);
    DeckPeakScope scope (bench.engine, 0);
    scope.setSize (400, 80);
    std::vector<juce::Point<float>> put;
    scope.putPointer = [&put] (auto place) { put.push_back (place); };

    const juce::Point from (50.0f, 30.0f);
    scope.mouseDown (ViewBench::event (scope, from, from));
    for (int i = 0; i < 40; ++i) // 10 pixels, and the pointer is back, as often as one likes
    {
        scope.mouseDrag (ViewBench::event (scope, from, from.translated (-10.0f, 0.0f), 10 * i));
        scope.mouseDrag (ViewBench::event (scope, from, from, 10 * i + 5));
        bench.render (1);
    }
    EXPECT_GT (bench.deck().head.position, 401'000.0) << "to the left is on in the track";
    EXPECT_EQ (put.size(), 40u);
    EXPECT_EQ (put.back(), from);
}

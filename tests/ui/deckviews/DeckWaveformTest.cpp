#include "ViewBench.h"

#include "ui/deckviews/ColumnPainter.h"
#include "ui/deckviews/DeckWaveform.h"

namespace
{
constexpr int width = 404, height = 240; // whole pixels at every scale
constexpr double scales[] { 1.0, 1.25, 1.5, 2.0 };

struct View : DeckWaveform
{
    explicit View (ViewBench& bench) : DeckWaveform (bench.engine, 0)
    {
        setSize (width, height);
        setVisible (true);
    }
};

/** The picture of a view that has drawn nothing before. */
juce::Image freshPicture (ViewBench& bench, double scale)
{
    View view (bench);
    return ViewBench::picture (view, scale);
}
}

TEST (DeckWaveform, AScrolledPictureIsTheOneThatIsDrawnAnew)
{
    ViewBench bench;
    bench.putTrack (ViewBench::noise (600'000));
    bench.deck().marks.cues[2] = 100'000.0;
    View view (bench);
    for (const auto scale : scales)
    {
        ViewBench::picture (view, scale);
        for (const auto step : { 512, 1764, -900, 5 * 512, 60'000, -30'000, 250'000, -1, 1'000'000, -90'000 })
        {
            bench.engine.transport.seekFrames (0, bench.deck().head.position + step);
            view.refresh();
            ASSERT_TRUE (ViewBench::same (ViewBench::picture (view, scale), freshPicture (bench, scale)))
                << scale << ", after a step of " << step;
        }
    }
}

TEST (DeckWaveform, DrawsNoMoreThanWhatComesIntoView)
{
    ViewBench bench;
    const auto samples = ViewBench::noise (900'000);
    bench.putTrack ({ samples.begin(), samples.begin() + 50'000 });
    View view (bench);
    const auto drawn = [&] (double scale)
    {
        view.refresh();
        ViewBench::picture (view, scale);
        return view.columnsDrawn();
    };
    for (const auto scale : scales)
    {
        bench.putTrack ({ samples.begin(), samples.begin() + 50'000 });
        EXPECT_EQ (drawn (scale), juce::roundToInt (width * scale));
        EXPECT_EQ (drawn (scale), 0);
        bench.engine.transport.seekFrames (0, 1764.0);
        EXPECT_NEAR (drawn (scale), 3 * scale, 1.0);

        // Audio that has been decoded meanwhile appears: from entry 97 to the right edge at entry 3 + 202.
        TrackIngest (bench.deck().trackTarget())
            .append (samples.data() + 50'176, samples.data() + 50'176, 10'000);
        EXPECT_NEAR (drawn (scale), (205 - 97) * scale, 2.0 * scale);
        EXPECT_TRUE (ViewBench::same (ViewBench::picture (view, scale), freshPicture (bench, scale)));
    }
    view.setSize (width - 100, height);
    EXPECT_EQ (drawn (1.0), width - 100) << "another size drops the image";
    bench.engine.settings.editor[EditorPreference::spectralWaveform] = 0;
    EXPECT_EQ (drawn (1.0), width - 100) << "and so does the other way to draw";
}

TEST (DeckWaveform, RepaintsOnlyWhatHasChanged)
{
    ViewBench bench;
    bench.putTrack (ViewBench::noise (604'000)); // what remains keeps its tenth over the first moves
    View view (bench);
    int repaints = 0;
    view.setCachedComponentImage (new RepaintCounter (repaints));
    const auto repaintsAfter = [&] (const std::function<void()>& change)
    {
        change();
        repaints = 0;
        view.refresh();
        return repaints;
    };
    auto& deck = bench.deck();
    view.refresh();
    EXPECT_EQ (repaintsAfter ([] {}), 0);
    EXPECT_EQ (repaintsAfter ([&] { deck.place (100.0); }), 0) << "within a column and a tenth of a second";
    EXPECT_EQ (repaintsAfter ([&] { deck.place (600.0); }), 1) << "the picture";
    EXPECT_EQ (repaintsAfter ([&] { deck.place (9000.0); }), 2) << "and the time";
    EXPECT_EQ (repaintsAfter ([&] { deck.marks.cues[0] = 1000.0; }), 1);
    EXPECT_EQ (repaintsAfter ([&] { deck.marks.downbeatPosition = 33'000; }), 1);
    EXPECT_EQ (repaintsAfter ([&] { deck.loops.mode = 1; }), 1);
    EXPECT_EQ (repaintsAfter ([] {}), 0);
}

TEST (ColumnPainter, DrawsTheBodyInsideTheEnvelope)
{
    auto overview = std::make_unique<TrackOverview>();
    overview->overviewMax[1] = 20;
    overview->overviewMin[1] = -10;
    overview->overviewLevel[1] = 5;
    overview->overviewLow[1] = 140;
    overview->overviewMid[1] = 60;
    overview->overviewHigh[1] = 30;
    const juce::Colour hue (0xff204060), ground (0xffff00ff);

    for (const auto scale : { 1, 2 })
        for (const auto spectral : { true, false })
        {
            constexpr int height = ColumnPainter::imageHeight, middle = ColumnPainter::centreLine;
            juce::Image image (juce::Image::RGB, 4 * scale, height * scale, false, juce::SoftwareImageType());
            image.clear (image.getBounds(), ground);
            const ColumnPainter painter { *overview, 1024, spectral, hue, { 1.0 * scale } };
            painter.paint (image, -scale); // entries -1 to 2, of which 0 and 1 are in the track
            const auto at = [&] (int entry, int y)
            { return image.getPixelAt ((entry + 2) * scale - 1, y * scale + scale / 2); };
            for (int y = 0; y < height; ++y)
            {
                EXPECT_EQ (at (-1, y), ground);
                EXPECT_EQ (at (2, y), ground);
                EXPECT_EQ (at (1, y) == ground, y < middle - 20 || y >= middle + 10) << y;
            }
            if (!spectral)
            {
                // Each channel's distance to 255 times 1 / (1 + 30 / 255).
                for (const auto y : { middle - 20, middle, middle + 9 })
                {
                    EXPECT_NEAR (at (1, y).getRed(), 255 - (255 - 0x20) * 255 / 285, 1);
                    EXPECT_NEAR (at (1, y).getBlue(), 255 - (255 - 0x60) * 255 / 285, 1);
                }
                continue;
            }
            const auto isNear = [&] (int y, juce::Colour colour)
            {
                EXPECT_NEAR (at (1, y).getRed(), colour.getRed(), 10) << y;
                EXPECT_NEAR (at (1, y).getGreen(), colour.getGreen(), 10) << y;
            };
            isNear (middle - 20, { 238, 95, 45 }); // the tips: as bright as a screen can show the data
            isNear (middle + 9, { 238, 95, 45 });
            isNear (middle - 1, { 242, 132, 93 }); // the body's centre: 255 - (255 - c) / 1.3
            isNear (middle, { 242, 132, 93 });
            isNear (middle - 5, { 238, 95, 45 }); // the body's edge
            EXPECT_NEAR (at (1, middle - 6).getRed(), 149 + (238 - 149) * 5.5 / 20,
                         6); // on the way to c / 1.6
        }
}

TEST (ColumnPainter, ZoomAndGainShowEveryEntryWithinTheReach)
{
    auto overview = std::make_unique<TrackOverview>();
    for (size_t entry = 0; entry < 40; ++entry)
        overview->overviewMax[entry] = entry == 21 ? 31 : 2;
    const juce::Colour ground (0xffff00ff);
    // The first column of entry 21, and its width.
    for (const auto& [zoom, first, width] :
         { std::tuple { 0.25, 5, 1 }, { 0.5, 10, 1 }, { 1.0, 21, 1 }, { 2.0, 42, 2 }, { 4.0, 84, 4 } })
        for (const auto& [gain, height] :
             { std::pair { 1.0, 31 }, { 59.0 / 32.0, 57 }, { 9.0, ColumnPainter::reach } })
        {
            SCOPED_TRACE (testing::Message() << zoom << " x " << gain);
            juce::Image image (juce::Image::RGB, 160, ColumnPainter::imageHeight, false,
                               juce::SoftwareImageType());
            image.clear (image.getBounds(), ground);
            ColumnPainter { *overview, 40 * 512, false, {}, { 1.0, zoom }, gain }.paint (image, 0);
            const auto isSet = [&] (int x, int up)
            { return image.getPixelAt (x, ColumnPainter::centreLine - up) != ground; };
            for (int x = 0; x < 160; ++x)
            {
                EXPECT_EQ (isSet (x, 1), x < 40 * zoom) << x;
                EXPECT_EQ (isSet (x, height), x >= first && x < first + width) << x;
            }
        }
}

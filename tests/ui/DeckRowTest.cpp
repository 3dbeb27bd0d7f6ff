#include "UiBench.h"

#include "deck/FileImportThread.h"
#include "ui/TimeText.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{
constexpr auto loadError = "*** Load Error ***";

/** Pixels that are clearly brighter than the ground in a part of a picture. */
int brightPixels (const juce::Image& image, juce::Rectangle<int> area)
{
    int count = 0;
    for (int y = area.getY(); y < area.getBottom(); ++y)
        for (int x = area.getX(); x < area.getRight(); ++x)
            count += image.getPixelAt (x, y).getBrightness() > 0.3f ? 1 : 0;
    return count;
}

juce::Component& waveformOf (UiBench& bench, int deck)
{
    return const_cast<OverviewWaveform&> (bench.editor->deckRow (deck).waveform());
}
}

TEST (DeckRow, SaysNothingThatItDoesNotKnow)
{
    UiBench bench;
    bench.refresh();
    const auto& texts = bench.editor->deckRow (0).texts();
    EXPECT_EQ (texts.title, "-");
    EXPECT_EQ (texts.tempo, "-");
    EXPECT_EQ (texts.position, "--:--.-");
    EXPECT_EQ (texts.length, "--:--.-");
    EXPECT_EQ (texts.state, "EMPTY");
}

TEST (DeckRow, FollowsTheDeck)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack (4.0), 1);
    auto& row = bench.editor->deckRow (1);
    EXPECT_EQ (row.texts().title, "Half Loud");
    EXPECT_EQ (row.texts().state, "STOPPED");
    EXPECT_EQ (row.texts().position, "00:00.0");
    EXPECT_EQ (row.texts().length, "00:04.0");
    EXPECT_TRUE (row.waveform().notice().isEmpty());

    bench.engine.transport.playPause (1);
    for (int i = 0; i < 150; ++i)
        bench.render();
    bench.refresh();
    EXPECT_EQ (row.texts().state, "PLAYING");
    EXPECT_GE (row.texts().position, "00:01.5");
    EXPECT_LE (row.texts().position, "00:01.6");

    bench.engine.decks.setPitchRange (3); // 0.16
    bench.engine.transport.setPitch (1, 1.0);
    bench.refresh();
    EXPECT_EQ (row.texts().pitch, "+8.00 %");
}

TEST (DeckRow, ShowsTheLinesOfAFailedLoadUntilTheNextLoad)
{
    UiBench bench;
    auto& row = bench.editor->deckRow (3);
    const auto broken = bench.folder.file ("broken.mp3");
    broken.replaceWithText ("no audio");
    bench.load (broken, 3);
    EXPECT_EQ (row.waveform().notice(),
               juce::StringArray ({ loadError, "File not found", "or DRM protected" }));
    for (int i = 0; i < 200; ++i)
        bench.refresh();
    EXPECT_EQ (row.waveform().notice()[0], loadError);
    EXPECT_NE (bench.editor->deckRow (2).waveform().notice()[0], loadError);
    UiBench::picture (*bench.editor, "failed-load");

    bench.load (bench.halfLoudTrack(), 3);
    EXPECT_TRUE (row.waveform().notice().isEmpty());

    bench.load (bench.folder.file ("missing.wav"), 3);
    EXPECT_EQ (row.waveform().notice()[0], loadError);
    for (int i = 0; i < 30; ++i)
        bench.refresh();
    EXPECT_TRUE (row.waveform().notice().isEmpty()) << "the deck kept its track and must be seen again";
}

TEST (DeckRow, DrawsTheWaveformWhereTheTrackHasSignal)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 0);
    auto& wave = waveformOf (bench, 0);
    const auto image = UiBench::picture (wave, "waveform");
    const auto half = image.getWidth() / 2;
    const auto strip = [&image] (int from, int to)
    { return juce::Rectangle<int> (from, 16, to - from, image.getHeight() - 16); };
    EXPECT_GT (brightPixels (image, strip (8, half - 8)), (half - 16) * image.getHeight() / 4);
    EXPECT_EQ (brightPixels (image, strip (half + 8, image.getWidth())), 0);
}

TEST (DeckRow, AClickOnTheWaveformSeeks)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 0);
    auto& wave = waveformOf (bench, 0);
    const auto& deck = *bench.engine.decks.deck (0);
    for (const auto share : { 0.25f, 0.75f, 0.0f })
    {
        wave.mouseDown (mouseAt (wave, { share * static_cast<float> (wave.getWidth()), 20.0f }));
        EXPECT_NEAR (deck.position / deck.loadedFrames, share, 0.001);
    }
}

TEST (DeckRow, ThePlayheadStandsAtThePosition)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 2);
    bench.engine.transport.seekNormalised (2, 0.75);
    bench.refresh();
    auto& wave = waveformOf (bench, 2);
    const auto image = UiBench::picture (wave, "playhead");
    const auto x = juce::roundToInt (0.75 * (image.getWidth() - 1));
    EXPECT_EQ (image.getPixelAt (x, image.getHeight() - 4), Look::deckHue (2));
    EXPECT_NE (image.getPixelAt (x - 3, image.getHeight() - 4), Look::deckHue (2));
}

TEST (DeckRow, TakesDroppedAudioFilesOnly)
{
    UiBench bench;
    auto& row = bench.editor->deckRow (1);
    const auto track = bench.halfLoudTrack().getFullPathName();
    EXPECT_FALSE (row.isInterestedInFileDrag ({ "/tmp/picture.png" }));
    EXPECT_TRUE (row.isInterestedInFileDrag ({ "/tmp/picture.png", track }));
    row.filesDropped ({ "/tmp/picture.png", track }, 5, 5);
    bench.engine.decks.deck (1)->importThread->waitUntilIdle();
    bench.refresh();
    EXPECT_EQ (row.texts().title, "Half Loud");
}

TEST (DeckRow, PitchFaderGoesDownForFasterAndResetsByDoubleClick)
{
    UiBench bench;
    PitchFader* fader = nullptr;
    for (auto* component : descendants (bench.editor->deckRow (0)))
        if (auto* found = dynamic_cast<PitchFader*> (component))
            fader = found;
    ASSERT_NE (fader, nullptr);
    const auto& pitch = bench.engine.decks.deck (0)->pitch;

    fader->setValue (0.0, juce::sendNotificationSync);
    EXPECT_NEAR (pitch, 1.0, 1e-6);
    bench.refresh();
    EXPECT_NEAR (fader->getValue(), 0.0, 1e-6) << "reading back must not turn the fader round";

    fader->mouseDoubleClick (mouseAt (*fader, { 4.0f, 4.0f }));
    EXPECT_NEAR (pitch, 0.5, 1e-6);
    bench.engine.transport.setPitch (0, 0.8);
    bench.refresh();
    EXPECT_NEAR (fader->getValue(), 0.2, 1e-6);
}

TEST (TimeText, FormatsWithoutRunningAhead)
{
    const std::pair<double, const char*> cases[] {
        { 0.0, "00:00.0" },      { 59.99, "00:59.9" },
        { 60.0, "01:00.0" },     { 0.3, "00:00.3" },
        { 6000.05, "100:00.0" }, { -0.01, "00:00.0" },
        { -1.5, "-00:01.5" },    { std::numeric_limits<double>::infinity(), "--:--.-" }
    };
    for (const auto& [seconds, text] : cases)
        EXPECT_EQ (timeText (seconds), text);
    EXPECT_EQ (percentText (1.0), "+0.00 %");
    EXPECT_EQ (percentText (0.99999), "+0.00 %");
    EXPECT_EQ (percentText (0.92), "-8.00 %");
}

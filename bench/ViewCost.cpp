#include "measure/BenchEngine.h"
#include "measure/Machine.h"
#include "measure/Timing.h"

#include "demo/DemoTracks.h"
#include "skin/Palette.h"
#include "ui/deckviews/DeckWaveform.h"
#include "ui/deckviews/DeckWaveformThumbnail.h"
#include "ui/deckviews/scope/DeckPeakScope.h"

#include <cstdio>

// bench_views: what the views of four playing decks cost at each tick of 40 ms, and when they are painted whole. With
// --pictures=FOLDER it paints them into files in place of that.

namespace
{
constexpr int stripHeight = 239, thumbnailHeight = 40, scopeHeight = 64, gap = 4;
constexpr int ticks = 500, fullPaints = 100, blocksOfTick = 14; // of 128 frames: 40.6 ms

/** Four decks one below the other: waveform, thumbnail and scope. */
class Desk : public juce::Component
{
public:
    struct Deck
    {
        Deck (CPlatterdex& engine, int index)
            : waveform (engine, index),
              thumbnail (engine, index),
              scope (engine, index)
        {
        }

        DeckWaveform waveform;
        DeckWaveformThumbnail thumbnail;
        DeckPeakScope scope;
    };

    Desk (CPlatterdex& engine, int width)
    {
        for (int d = 0; d < deckCount; ++d)
        {
            decks.push_back (std::make_unique<Deck> (engine, d));
            for (auto* view : views (d))
                addAndMakeVisible (view);
        }
        setOpaque (true);
        setSize (width, deckCount * (stripHeight + thumbnailHeight + scopeHeight + 3 * gap));
        setVisible (true);
    }

    std::array<PollingView*, 3> views (int deck)
    {
        auto& of = *decks[static_cast<size_t> (deck)];
        return { &of.waveform, &of.thumbnail, &of.scope };
    }

    void paint (juce::Graphics& g) override { g.fillAll (palette::panel); }

    void resized() override
    {
        auto area = getLocalBounds();
        constexpr std::array heights { stripHeight, thumbnailHeight, scopeHeight };
        for (int d = 0; d < static_cast<int> (decks.size()); ++d)
            for (size_t i = 0; i < heights.size(); ++i)
            {
                views (d)[i]->setBounds (area.removeFromTop (heights[i]));
                area.removeFromTop (gap);
            }
    }

    void showOnly (size_t which)
    {
        for (int d = 0; d < deckCount; ++d)
            for (size_t i = 0; i < 3; ++i)
                views (d)[i]->setVisible (i == which || which > 2);
    }

    /** Paints what a window repaints after a tick: of the waveforms the time and the picture, of the others all. */
    void paintChanges (juce::Image& image, double scale, size_t which)
    {
        juce::RectangleList<int> changed;
        for (int d = 0; d < deckCount; ++d)
        {
            const auto bounds = views (d)[which]->getBounds();
            if (which > 0)
                changed.add (bounds);
            else
            {
                changed.add (DeckWaveform::timeArea (bounds.getWidth()).translated (0, bounds.getY()));
                changed.add (bounds.withTrimmedTop (DeckWaveform::pictureTop)
                                 .withHeight (DeckWaveform::pictureBottom - DeckWaveform::pictureTop));
            }
        }
        juce::Graphics g (image);
        g.addTransform (juce::AffineTransform::scale (static_cast<float> (scale)));
        g.reduceClipRegion (changed);
        paintEntireComponent (g, false);
    }

    void paintInto (juce::Image& image, double scale)
    {
        juce::Graphics g (image);
        g.addTransform (juce::AffineTransform::scale (static_cast<float> (scale)));
        paintEntireComponent (g, false);
    }

private:
    std::vector<std::unique_ptr<Deck>> decks;
};

void loadDemo (BenchEngine& engine)
{
    const auto tracks = demoTracks();
    for (int d = 0; d < deckCount; ++d)
    {
        const auto& track = tracks[static_cast<size_t> (d) % tracks.size()];
        engine.putTrack (d, renderDemoTrack (track), DemoTrack::sampleRate);
        auto& deck = engine.deck (d);
        deck.marks.bpm = track.bpm;
        deck.marks.fixedGrid = 1;
        deck.track.numBeats = 1;
        deck.marks.downbeatPosition = static_cast<int32_t> (track.barFrames (8));
        for (int slot = 0; slot < 3; ++slot)
            deck.marks.cues[static_cast<size_t> (slot)] = static_cast<double> (track.barFrames (16 + slot));
        deck.play.currentCue = 1;
        engine->transport.seekFrames (d, static_cast<double> (track.barFrames (17)) + 9000.0 * d);
    }
    engine.deck (1).loops.mode = 1;
    engine.deck (1).loops.start = static_cast<double> (tracks[1].barFrames (17));
    engine.deck (2).loops.in = static_cast<double> (tracks[2].barFrames (16));
    engine.deck (2).loops.out = static_cast<double> (tracks[2].barFrames (18));
    engine.deck (2).loops.inSet = engine.deck (2).loops.outSet = 1;
}

void measure (BenchEngine& engine, int width, double scale)
{
    constexpr std::array names { "waveforms", "thumbnails", "scopes" };
    for (size_t which = 0; which < names.size(); ++which)
    {
        Desk desk (*engine, width);
        desk.showOnly (which);
        juce::Image screen (juce::Image::ARGB, juce::roundToInt (desk.getWidth() * scale),
                            juce::roundToInt (desk.getHeight() * scale), true, juce::SoftwareImageType());
        const auto look = [&]
        {
            for (int d = 0; d < deckCount; ++d)
                desk.views (d)[which]->refresh();
            desk.paintChanges (screen, scale, which);
        };
        look();
        Timing::Durations moving (ticks), whole (fullPaints);
        for (int i = 0; i < ticks; ++i)
        {
            for (int block = 0; block < blocksOfTick; ++block)
                engine.processBlock();
            const auto before = Timing::nanoseconds();
            look();
            moving.add (Timing::nanoseconds() - before);
        }
        for (int i = 0; i < fullPaints; ++i)
        {
            for (int d = 0; d < deckCount; ++d)
                desk.views (d)[which]->resized(); // drops the picture
            const auto before = Timing::nanoseconds();
            look();
            whole.add (Timing::nanoseconds() - before);
        }
        std::printf ("four %-10s %5d px  %4.2fx %9.3f ms %9.3f ms %9.3f ms %8.2f %%\n", names[which], width,
                     scale, moving.quantile (0.5) / 1e6, moving.quantile (0.99) / 1e6,
                     whole.quantile (0.5) / 1e6, moving.mean() / 40e6 * 100.0);
    }
}

void paintPictures (BenchEngine& engine, const juce::File& folder)
{
    folder.createDirectory();
    for (const auto scale : { 1.0, 1.5, 2.0 })
    {
        Desk desk (*engine, 525);
        juce::Image screen (juce::Image::RGB, juce::roundToInt (desk.getWidth() * scale),
                            juce::roundToInt (desk.getHeight() * scale), true, juce::SoftwareImageType());
        desk.paintInto (screen, scale);
        const auto file = folder.getChildFile ("deckviews-" + juce::String (scale) + "x.png");
        file.deleteFile();
        juce::FileOutputStream stream (file);
        juce::PNGImageFormat().writeImageToStream (screen, stream);
        std::printf ("%s\n", file.getFullPathName().toRawUTF8());
    }
}
}

int main (int argc, char** argv)
{
    const juce::ScopedJuceInitialiser_GUI toolkit;
    const juce::ArgumentList arguments (argc, argv);
    BenchEngine engine (true);
    loadDemo (engine);
    if (const auto folder = arguments.getValueForOption ("--pictures"); folder.isNotEmpty())
    {
        paintPictures (engine, juce::File::getCurrentWorkingDirectory().getChildFile (folder));
        return 0;
    }

    Machine::print();
    for (int d = 0; d < deckCount; ++d)
        engine->transport.playPause (d);
    std::printf ("%-15s %8s %6s %12s %12s %12s %10s\n", "", "width", "scale", "tick", "99 %", "whole",
                 "of 40 ms");
    for (const auto width : { 525, 1165 })
        for (const auto scale : { 1.0, 2.0 })
            measure (engine, width, scale);
}

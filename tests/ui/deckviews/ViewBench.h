#pragma once

#include "engine/CPlatterdex.h"
#include "shared/Signals.h"
#include "shared/TemporaryFolder.h"
#include "tracks/TrackIngest.h"

#include <gtest/gtest.h>

/** An engine without a window, and what tests of its views do to it. */
class ViewBench
{
public:
    static constexpr double rate = 44100.0;

    ViewBench() { engine.setRateAndBufferSizeDetails (rate, 512); }

    DeckPlayer& deck (int index = 0) { return *engine.decks.deck (index); }

    /** Music-like noise: loud and soft, bright and dull in turn. */
    static std::vector<int16_t> noise (int frames)
    {
        const auto white = Signals::noise (frames, 11, 1.0);
        std::vector<int16_t> samples (white.size());
        double dull = 0.0;
        for (size_t i = 0; i < samples.size(); ++i)
        {
            dull += (white[i] - dull) * (i % 22'050 < 4000 ? 0.05 : 0.6);
            samples[i] = static_cast<int16_t> (30'000.0 * dull * (0.2 + 0.8 * ((i / 7000) % 3) / 2.0));
        }
        return samples;
    }

    /** A grid of 120 BPM from the downbeat at half a second, when there is something to put it on. */
    void putTrack (const std::vector<int16_t>& samples, int index = 0)
    {
        const juce::ScopedLock lock (engine.getCallbackLock());
        deck (index).resetTrack();
        deck (index).overview->clear();
        TrackIngest (deck (index).trackTarget())
            .append (samples.data(), samples.data(), static_cast<int> (samples.size()));
        deck (index).marks.bpm = 120.0;
        deck (index).marks.fixedGrid = 1;
        deck (index).marks.downbeatPosition = 22'050;
        deck (index).track.numBeats = 1;
    }

    /** Blocks of 10 ms. */
    void render (int blocks)
    {
        juce::AudioBuffer<float> buffer (CPlatterdex::outputChannels, 441);
        juce::MidiBuffer midi;
        for (int i = 0; i < blocks; ++i)
        {
            buffer.clear();
            const juce::ScopedLock lock (engine.getCallbackLock());
            engine.processBlock (buffer, midi);
        }
    }

    static juce::Image picture (juce::Component& view, double scale = 1.0)
    {
        return view.createComponentSnapshot (view.getLocalBounds(), true, static_cast<float> (scale));
    }

    static bool same (const juce::Image& a, const juce::Image& b)
    {
        if (a.getBounds() != b.getBounds())
            return false;
        for (int y = 0; y < a.getHeight(); ++y)
            for (int x = 0; x < a.getWidth(); ++x)
                if (a.getPixelAt (x, y) != b.getPixelAt (x, y))
                    return false;
        return true;
    }

    /** An event of a press at `from` whose pointer is at `to`. */
    static juce::MouseEvent event (juce::Component& view, juce::Point<float> from, juce::Point<float> to,
                                   juce::int64 atMs = 0,
                                   juce::ModifierKeys keys = juce::ModifierKeys::leftButtonModifier)
    {
        const juce::Time start (1'000'000'000);
        return { juce::Desktop::getInstance().getMainMouseSource(),
                 to,
                 keys,
                 juce::MouseInputSource::defaultPressure,
                 juce::MouseInputSource::defaultOrientation,
                 juce::MouseInputSource::defaultRotation,
                 juce::MouseInputSource::defaultTiltX,
                 juce::MouseInputSource::defaultTiltY,
                 &view,
                 &view,
                 start + juce::RelativeTime::milliseconds (atMs),
                 from,
                 start,
                 1,
                 from.getDistanceFrom (to) > 4.0f };
    }

    TemporaryFolder folder;
    CPlatterdex engine { [this]
                         {
                             EngineWorld world;
                             world.folders.root = folder;
                             world.pacing = Pacing::Mode::offline;
                             world.seed = 1;
                             return world;
                         }() };
};

/** Counts the repaints that a component asks for. */
class RepaintCounter : public juce::CachedComponentImage
{
public:
    explicit RepaintCounter (int& c) : count (c) {}
    void paint (juce::Graphics&) override {}
    bool invalidateAll() override { return invalidate ({}); }
    bool invalidate (const juce::Rectangle<int>&) override
    {
        ++count;
        return true;
    }
    void releaseResources() override {}

private:
    int& count;
};

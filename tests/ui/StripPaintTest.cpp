#include "UiBench.h"

#include "ui/widgets/PXSlider.h"

#include <gtest/gtest.h>

#include <cstring>

namespace
{
/** Stands in for the window system: keeps what has been painted, and paints again only what was asked for. */
class Screen : public juce::Component
{
public:
    Screen (juce::Component& content, float s) : shown (content), scale (s)
    {
        setCachedComponentImage (new Collector (*this)); // this owns it
        setSize (content.getWidth(), content.getHeight());
        addAndMakeVisible (content);
        setVisible (true);
        picture = blank();
        dirty.add (getLocalBounds());
        update();
    }

    ~Screen() override { removeAllChildren(); }

    /** Paints the strips that were asked for since the last time. */
    void update()
    {
        juce::RectangleList<int> pixels;
        for (const auto& area : std::exchange (dirty, {}))
            pixels.add ((area.toFloat() * scale).getSmallestIntegerContainer());
        paintInto (picture, &pixels);
    }

    /** The area in which the picture is another than one that is painted at once; empty if they are the same. */
    juce::Rectangle<int> staleArea()
    {
        auto fresh = blank();
        paintInto (fresh, nullptr);
        const juce::Image::BitmapData a (picture, juce::Image::BitmapData::readOnly),
            b (fresh, juce::Image::BitmapData::readOnly);
        juce::Rectangle<int> stale;
        for (int y = 0; y < a.height; ++y)
            if (std::memcmp (a.getLinePointer (y), b.getLinePointer (y), static_cast<size_t> (a.width) * 4)
                != 0)
                for (int x = 0; x < a.width; ++x)
                    if (a.getPixelColour (x, y) != b.getPixelColour (x, y))
                        stale = stale.isEmpty() ? juce::Rectangle<int> (x, y, 1, 1)
                                                : stale.getUnion ({ x, y, 1, 1 });
        return stale;
    }

    /** The view that lies there. */
    std::string viewAt (juce::Point<int> pixel)
    {
        auto* view = shown.getComponentAt ((pixel.toFloat() / scale).roundToInt());
        return view != nullptr ? typeid (*view).name() : "nothing";
    }

private:
    struct Collector : juce::CachedComponentImage
    {
        explicit Collector (Screen& s) : screen (s) {}
        void paint (juce::Graphics&) override {}
        bool invalidateAll() override { return invalidate (screen.getLocalBounds()); }
        bool invalidate (const juce::Rectangle<int>& area) override
        {
            screen.dirty.add (area);
            return false;
        }
        void releaseResources() override {}
        Screen& screen;
    };

    juce::Image blank() const
    {
        return { juce::Image::ARGB, juce::roundToInt (getWidth() * scale),
                 juce::roundToInt (getHeight() * scale), true, juce::SoftwareImageType() };
    }

    void paintInto (juce::Image& image, const juce::RectangleList<int>* only)
    {
        juce::Graphics g (image);
        if (only != nullptr)
            g.getInternalContext().clipToRectangleList (*only);
        g.addTransform (juce::AffineTransform::scale (scale));
        shown.paintEntireComponent (g, false);
    }

    juce::Component& shown;
    const float scale;
    juce::Image picture;
    juce::RectangleList<int> dirty;
};
}

TEST (StripPaint, WhatTicksPaintIsWhatAFullPaintShows)
{
    for (const auto scale : { 1.0f, 2.0f })
    {
        UiBench bench;
        auto& settings = bench.engine.settings;
        settings.editor[EditorPreference::deckPanelsLeft] = 2;
        settings.deckSetup[0].panelsLeft = { 0, 1, 2, 7 };
        settings.deckSetup[1].panelsLeft = { 4, 6, 7, 7 };
        bench.editor->setSize (1600, 820);
        for (const auto deck : { 0, 1 })
            bench.load (bench.halfLoudTrack (20.0), deck);
        const auto command = [&bench] (const char* constant, float value)
        { bench.engine.setParameter (CommandTable::numberOf (constant), value); };
        Screen screen (*bench.editor, scale);
        const auto show = [&] (int tab)
        {
            bench.editor->globalBlock().setCurrentTabIndex (tab);
            screen.repaint(); // JUCE asks for what moves on a real screen only
        };
        const std::vector<std::pair<int, std::function<void()>>> actions {
            { 3, [&] { command ("PLAY_PAUSE_A", 1.0f); } },
            { 4, [&] { command ("PLAY_PAUSE_B", 1.0f); } },
            { 8, [&] { command ("HOT_CUE_1_A", 1.0f); } },
            { 9, [&] { command ("LOOP_A", 1.0f); } },
            { 12, [&] { bench.engine.transport.seekFrames (1, 300'000.0); } },
            { 13, [&] { command ("VOLUME_A", 0.3f); } },
            { 14, [&] { command ("PITCH_B", 0.1f); } },
            { 16, [&] { command ("LOOP_A", 1.0f); } },
            { 17, [&] { bench.engine.transport.seekFrames (0, 20'000.0); } },
            { 19, [&] { show (GlobalComponent::wav); } },
            { 24, [&] { show (GlobalComponent::fx); } },
            { 26, [&] { command ("EFFECT_SELECT_1_GROUP_A", 0.75f); } },
            { 27, [&] { command ("EFFECT_PARAM_1_GROUP_A", 0.75f); } },
            { 28, [&] { bench.load (bench.halfLoudTrack (3.0), 1); } },
        };

        const juce::SharedResourcePointer<PollClock> clock;
        for (int tick = 0; tick < 32; ++tick)
        {
            for (const auto& [when, action] : actions)
                if (when == tick)
                    action();
            bench.render (1920);
            bench.now += PollClock::movingMs;
            bench.engine.deliverMessages();
            clock->tick (tick % PollClock::calmTurns == 0);
            screen.update();
            const auto stale = screen.staleArea();
            ASSERT_TRUE (stale.isEmpty()) << "scale " << scale << ", tick " << tick << ": "
                                          << stale.toString() << ", " << screen.viewAt (stale.getCentre());
        }
    }
}

#include "measure/BenchEngine.h"
#include "measure/Machine.h"
#include "measure/Timing.h"

#include "demo/DemoTracks.h"
#include "text/ZRRenderer.h"
#include "ui/CPlatterdexVstEditor.h"

#include <cstdio>

// bench_face: what the whole editor costs with four playing decks: at each tick of 40 ms, when it is painted whole, and
// until it stands painted for the first time.

namespace
{
constexpr int width = 1920, height = 1080;
constexpr int ticks = 200, fullPaints = 30, openings = 10, blocksOfTick = 14; // of 128 frames: 40.6 ms

/** Gathers what the views want painted anew, as a window would. */
class Dirt : public juce::CachedComponentImage
{
public:
    void paint (juce::Graphics&) override {}

    bool invalidateAll() override
    {
        areas = juce::Rectangle<int> (1 << 20, 1 << 20);
        return false;
    }

    bool invalidate (const juce::Rectangle<int>& area) override
    {
        areas.add (area);
        return false;
    }

    void releaseResources() override {}

    juce::RectangleList<int> areas;
};

class Screen
{
public:
    explicit Screen (double s)
        : scale (s),
          image (juce::Image::RGB, juce::roundToInt (width * s), juce::roundToInt (height * s), true,
                 juce::SoftwareImageType())
    {
    }

    /** @param areas   in the editor's pixels */
    void paint (juce::Component& editor, juce::RectangleList<int> areas)
    {
        areas.clipTo (editor.getLocalBounds());
        juce::RectangleList<int> clip;
        for (const auto& area : areas)
            clip.add ((area.toDouble() * scale).getSmallestIntegerContainer());
        const auto context = createTextContext (image, {}, clip);
        juce::Graphics g (*context);
        g.addTransform (juce::AffineTransform::scale (static_cast<float> (scale)));
        editor.paintEntireComponent (g, true);
    }

private:
    const double scale;
    juce::Image image;
};

void refreshAll (juce::Component& parent)
{
    if (!parent.isVisible())
        return;
    if (auto* view = dynamic_cast<PollingView*> (&parent))
        view->refresh();
    for (int i = 0; i < parent.getNumChildComponents(); ++i)
        refreshAll (*parent.getChildComponent (i));
}

std::unique_ptr<CPlatterdexVstEditor> open (BenchEngine& engine, int tab, bool waves)
{
    auto editor = std::make_unique<CPlatterdexVstEditor> (*engine);
    editor->globalBlock().setCurrentTabIndex (tab);
    editor->showWaves (waves);
    editor->setVisible (true);
    editor->setSize (width, height);
    return editor;
}

void measure (BenchEngine& engine, int tab, double scale, bool waves)
{
    Screen screen (scale);
    Timing::Durations opening (openings), whole (fullPaints), tick (ticks);
    for (int i = 0; i < openings; ++i)
    {
        const auto before = Timing::nanoseconds();
        const auto editor = open (engine, tab, waves);
        refreshAll (*editor);
        screen.paint (*editor, editor->getLocalBounds());
        opening.add (Timing::nanoseconds() - before);
    }

    const auto editor = open (engine, tab, waves);
    refreshAll (*editor);
    screen.paint (*editor, editor->getLocalBounds());
    for (int i = 0; i < fullPaints; ++i)
    {
        const auto before = Timing::nanoseconds();
        screen.paint (*editor, editor->getLocalBounds());
        whole.add (Timing::nanoseconds() - before);
    }

    auto* dirt = new Dirt();
    editor->setCachedComponentImage (dirt);
    for (int i = 0; i < ticks; ++i)
    {
        for (int block = 0; block < blocksOfTick; ++block)
            engine.processBlock();
        dirt->areas.clear();
        const auto before = Timing::nanoseconds();
        refreshAll (*editor);
        screen.paint (*editor, dirt->areas);
        tick.add (Timing::nanoseconds() - before);
    }
    std::printf ("%-8s %-6s %5.2fx %9.2f ms %9.2f ms %9.2f ms %9.1f ms\n",
                 GlobalComponent::names[static_cast<size_t> (tab)], waves ? "waves" : "", scale,
                 tick.quantile (0.5) / 1e6, tick.quantile (0.99) / 1e6, whole.quantile (0.5) / 1e6,
                 opening.quantile (0.5) / 1e6);
}
}

int main()
{
    const juce::ScopedJuceInitialiser_GUI toolkit;
    BenchEngine engine (true);
    const auto tracks = demoTracks();
    for (int deck = 0; deck < deckCount; ++deck)
    {
        const auto& track = tracks[static_cast<size_t> (deck) % tracks.size()];
        engine.putTrack (deck, renderDemoTrack (track), DemoTrack::sampleRate);
        auto& player = engine.deck (deck);
        player.marks.bpm = track.bpm;
        player.marks.fixedGrid = 1;
        player.track.numBeats = 1;
        engine->transport.playPause (deck);
    }
    engine->settings.editor[EditorPreference::fourDeckMode] = 1;

    Machine::print();
    std::printf ("%-8s %-6s %6s %12s %12s %12s %12s\n", "page", "", "scale", "tick", "99 %", "whole",
                 "opening");
    for (const auto tab : { GlobalComponent::mixer, GlobalComponent::fx })
        for (const auto scale : { 1.0, 2.0 })
            for (const auto waves : { false, true })
                measure (engine, tab, scale, waves);
}

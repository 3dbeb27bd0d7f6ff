#include "adec/BuiltDecoder.h"
#include "app/audio/EnginePlayer.h"
#include "app/audio/SilentDevice.h"
#include "demo/DemoFiles.h"
#include "demo/DemoTracks.h"
#include "engine/CPlatterdex.h"
#include "shared/TemporaryFolder.h"
#include "ui/CPlatterdexVstEditor.h"

#include <unistd.h>

#include <array>
#include <cstdio>
#include <ctime>
#include <fstream>

// window_openings [TIMES]: opens and closes the editor in a real window while four decks play at the clock's pace. Fails
// if a window is never painted, if memory grows with their number, or if the blocks don't go on in time meanwhile.

namespace
{
constexpr int width = 1280, height = 800;
constexpr int turnMs = 5, longestTurns = 12000; // a minute for one window
constexpr int framesShown = 3;                  // the first paint, and two more that its polling asked for
constexpr int warmUp = 20;                      // pictures, faces and JUCE's own buffers are made once
constexpr double mostGrowth = 20e3; // bytes an opening; an editor alone takes some hundred thousand
constexpr unsigned latePart =
    10; // at most one block of so many may be late, on a machine that has other work too

double residentBytes()
{
    std::ifstream statm ("/proc/self/statm");
    int64_t total = 0, resident = 0;
    statm >> total >> resident;
    return static_cast<double> (resident) * static_cast<double> (sysconf (_SC_PAGESIZE));
}

/** Processor time of the calling thread in milliseconds. */
double processorMs()
{
    timespec time {};
    clock_gettime (CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double> (time.tv_sec) * 1e3 + static_cast<double> (time.tv_nsec) / 1e6;
}

EngineWorld world (const juce::File& root)
{
    EngineWorld made;
    made.folders.root = root;
    made.decoderLibrary = juce::File (builtDecoder());
    made.hasMessageLoop = true;
    made.createEditor = [] (CPlatterdex& engine) { return new CPlatterdexVstEditor (engine); };
    return made;
}

class Window : public juce::DocumentWindow
{
public:
    explicit Window (juce::AudioProcessor& engine)
        : DocumentWindow ("Openings", {}, allButtons),
          beganMs (processorMs())
    {
        setUsingNativeTitleBar (true);
        setContentOwned (engine.createEditorIfNeeded(), true);
        centreWithSize (width, height);
        setVisible (true);
    }

    void paintOverChildren (juce::Graphics&) override
    {
        if (paints++ == 0)
            openingMs = processorMs() - beganMs;
    }

    const double beganMs;
    double openingMs = 0.0; ///< processor time from its making to its first picture
    int paints = 0;
};

/** Lets one window after the other come and go. Ends the message loop after the last. */
class Openings : private juce::Timer
{
public:
    Openings (CPlatterdex& e, int t) : engine (e), times (t) { startTimer (turnMs); }

    /** @returns false with a line on the error output if something is wrong */
    bool judge (const BlockTimes& blocks) const
    {
        [[maybe_unused]] const auto grown = (residentAtEnd - residentAtWarm) / std::max (1, times - warmUp);
        std::printf ("%d of %d windows, first paint after %.1f ms of processor time, the slowest %.1f ms\n",
                     opened, times, sumMs / std::max (1, opened), slowestMs);
        std::printf ("resident %.1f MB after %d, %.1f MB at the end\n", residentAtWarm / 1e6, warmUp,
                     residentAtEnd / 1e6);
        std::printf ("%s\n", blocks.line().toRawUTF8());
        const auto fail = [] (const char* what)
        {
            std::fprintf (stderr, "FAILED: %s\n", what);
            return false;
        };
        if (opened < times)
            return fail ("a window was never painted");
        if (blocks.late * latePart > blocks.blocks)
            return fail ("blocks came late while windows opened");
#ifndef __SANITIZE_ADDRESS__ // which keeps what is freed, and finds leaks itself
        if (grown > mostGrowth)
            return fail ("memory grows with the windows");
#endif
        return true;
    }

private:
    void timerCallback() override
    {
        if (window == nullptr)
            return open();
        if (window->paints < framesShown)
        {
            if (++turns > longestTurns)
                juce::MessageManager::getInstance()->stopDispatchLoop();
            return;
        }
        close();
    }

    void open()
    {
        turns = 0;
        if (opened == warmUp)
            residentAtWarm = residentBytes();
        if (opened == times)
        {
            residentAtEnd = residentBytes();
            return juce::MessageManager::getInstance()->stopDispatchLoop();
        }
        engine.settings.editor[EditorPreference::fourDeckMode] = static_cast<int8_t> (opened % 2);
        window = std::make_unique<Window> (engine);
    }

    void close()
    {
        sumMs += window->openingMs;
        slowestMs = std::max (slowestMs, window->openingMs);
        window.reset();
        ++opened;
    }

    CPlatterdex& engine;
    const int times;
    std::unique_ptr<Window> window;
    int opened = 0, turns = 0;
    double sumMs = 0.0, slowestMs = 0.0, residentAtWarm = 0.0, residentAtEnd = 0.0;
};

void loadAndPlay (CPlatterdex& engine, const juce::File& folder)
{
    writeDemoTracks (folder);
    for (int deck = 0; deck < deckCount; ++deck)
    {
        const auto& track = demoTracks()[static_cast<size_t> (deck) % demoTracks().size()];
        engine.loadTrack (folder.getChildFile (track.fileName), deck);
        engine.loaders.waitUntilIdle (deck);
        engine.transport.playPause (deck);
    }
}

/** @returns how many decks are at another frame than before */
int decksThatMoved (CPlatterdex& engine, std::array<double, deckCount>& places)
{
    int moved = 0;
    for (int deck = 0; deck < deckCount; ++deck)
    {
        auto& last = places[static_cast<size_t> (deck)];
        const double place = engine.decks.deck (deck)->head.position;
        moved += place != last ? 1 : 0;
        last = place;
    }
    return moved;
}
}

int main (int argc, char** argv)
{
    const auto times = argc > 1 ? std::atoi (argv[1]) : 200;
    const juce::ScopedJuceInitialiser_GUI toolkit;
    const TemporaryFolder folder;
    CPlatterdex engine (world (folder));
    EnginePlayer player (engine);
    SilentDevice device;
    device.open ({}, (juce::BigInteger (1) << SilentDevice::outputCount) - 1, 0.0, 0);
    device.start (&player);
    loadAndPlay (engine, folder.file ("tracks"));

    std::array<double, deckCount> places {};
    decksThatMoved (engine, places);
    Openings openings (engine, times);
    juce::MessageManager::getInstance()->runDispatchLoop();
    const auto moved = decksThatMoved (engine, places);
    device.stop();
    if (moved < deckCount)
        std::fprintf (stderr, "FAILED: only %d decks played on\n", moved);
    return openings.judge (player.times) && moved == deckCount ? 0 : 1;
}

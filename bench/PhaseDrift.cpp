// Two locked decks for as long as one likes: how far their clicks drift apart, minute by minute, at usual rates, and what
// it costs.
// usage: bench_phase_drift [MINUTES]

#include "../tests/engine/ClickDecks.h"

#include <juce_events/juce_events.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>

int main (int argc, char** argv)
{
    const auto minutes = argc > 1 ? std::max (1, std::atoi (argv[1])) : 11;
    const auto seconds = minutes * 60.0 + 20.0;
    const juce::ScopedJuceInitialiser_GUI toolkit;
    const auto begun = std::chrono::steady_clock::now();
    ClickDecks decks (false, 512);
    decks.put (0, { 121.37, 24000.0, 0.0, seconds });
    decks.put (1, { 126.91, 22050.0, 0.01, seconds });
    decks.deck (0).tempo.pitch = 0.61;
    decks.playPause (0);
    decks.render (2.4);
    decks.syncLock (1);
    decks.playPause (1);
    bool isVoid = false;
    for (int minute = 1; minute <= minutes; ++minute)
    {
        const auto from = decks.host->position();
        decks.render (60.0);
        const auto distances = decks.distances (1, 0, from);
        isVoid = isVoid || distances.size() < 100;
        std::printf ("minute %3d: %zu beats, largest distance %.3f ms\n", minute, distances.size(),
                     ClickDecks::largest (distances));
    }
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - begun;
    std::printf ("%.0f x real time\n", minutes * 60.0 / passed.count());
    return isVoid ? 1 : 0;
}

#include "cli/mix/MixTempo.h"

#include "cli/TerminalOutput.h"
#include "support/language/Translate.h"

#include <cmath>

namespace
{
constexpr double reach = 0.1;    ///< of a tempo that is followed
constexpr double octave = 1.414; ///< beyond this ratio half or double is nearer
constexpr double ownTempo = 0.5; ///< the pitch fader's middle
}

void MixTempo::look()
{
    for (int d : { 0, 1 })
    {
        const auto& deck = *engine.decks.deck (d);
        auto& done = isPrepared[static_cast<size_t> (d)];
        const auto waits = deck.play.on == 0 && deck.track.loadedFrames > 0;
        if (waits && !done && engine.decks.deck (1 - d)->play.on != 0)
        {
            prepare (d);
            done = true;
        }
        done = done && waits;
    }
}

void MixTempo::prepare (int entering)
{
    auto& deck = *engine.decks.deck (entering);
    const auto& onAir = *engine.decks.deck (1 - entering);
    if (onAir.track.numBeats < 1 || deck.track.numBeats < 1 || !(deck.marks.bpm > 0.0))
        return;
    const auto ratio = onAir.marks.bpm * onAir.tempo.factor / deck.marks.bpm;
    const auto factor = ratio > octave ? 2.0 : ratio < 1.0 / octave ? 0.5 : 1.0;
    const auto follows = std::abs (ratio / factor - 1.0) <= reach;
    if (follows && factor > 1.0)
        engine.grids.doubleTempo (entering);
    if (follows && factor < 1.0)
        engine.grids.halveTempo (entering);
    if (!follows)
    {
        engine.transport.setPitch (entering, ownTempo);
        reportLine ("platterdex: "
                    + tr ("%1 is at %2 BPM too far from %3 BPM for sync to hold: it plays in its own tempo.",
                          oneLine (deck.texts().filePath), juce::String (deck.marks.bpm, 1),
                          juce::String (onAir.marks.bpm * onAir.tempo.factor, 1)));
    }
    engine.settings.automixSync = follows ? 1 : 0;
}

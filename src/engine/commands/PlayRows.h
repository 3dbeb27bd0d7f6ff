#pragma once

#include "engine/commands/RowHelpers.h"

/** Starting, stopping and moving the decks by hand. */
namespace CommandTable
{
inline double readPlaying (CPlatterdex& engine, int deck, int)
{
    return deckOf (engine, deck)->play.on != 0;
}

constexpr CommandRow playRows[] {
    {
        .numbers = perDeck (1),
        .name = N_ ("Play/Pause {d}"),
        .constant = "PLAY_PAUSE_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.transport.playPause (c.deck); },
        .read = readPlaying,
        .feedback = Feedback::lamp,
        .writes = "play or stop",
        .reads = "1 while playing",
    },
    {
        .numbers = perDeck (5),
        .name = N_ ("Play Synchronized {d}"),
        .constant = "PLAY_SYNCHRONIZED_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.transport.playSynchronized (c.deck); },
        .read = readPlaying,
        .feedback = Feedback::lamp,
        .writes = "starts in tempo and phase",
        .reads = "1 while playing",
    },
    {
        .numbers = perDeck (193),
        .name = N_ ("Rewind {d}"),
        .constant = "REWIND_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.transport.rewind (c.deck); },
        .writes = "to the track's start",
        .reads = "0",
    },
    {
        .numbers = perDeck (201),
        .name = N_ ("Jog {d}"),
        .constant = "JOG_{d}",
        .kind = Kind::value,
        .shape = Shape::jog,
        .write = [] (CPlatterdex& e, const CommandCall& c)
        { e.transport.bendJog (c.deck, c.value, c.arg1, c.arg2); },
        .writes = "a step of the wheel, with bend and scratch scale",
        .reads = "0",
    },
    {
        .numbers = perDeck (205),
        .name = N_ ("Jog Scratch On {d}"),
        .constant = "JOG_SCRATCH_ON_{d}",
        .kind = Kind::state,
        .shape = Shape::held,
        .write = [] (CPlatterdex& e, const CommandCall& c)
        { e.transport.setScratch (c.deck, c.isPressed(), false); },
        .read = [] (CPlatterdex& e, int deck, int) -> double { return deckOf (e, deck)->jog.scratchOn != 0; },
        .feedback = Feedback::lamp,
        .writes = "scratch while held",
        .reads = "1 in scratch",
    },
    {
        .numbers = perDeck (209),
        .name = N_ ("Seek {d}"),
        .constant = "SEEK_{d}",
        .kind = Kind::value,
        .shape = Shape::seek,
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.transport.seekNormalised (c.deck, c.value); },
        .read =
            [] (CPlatterdex& e, int deck, int)
        {
            const auto* d = deckOf (e, deck);
            const double frames = d->track.loadedFrames;
            return frames > 0.0 ? d->heardPosition() / frames : 0.0;
        },
        .feedback = Feedback::level,
        .writes = "the position, 0 to 1 of the track",
        .reads = "the position",
    },
};
}

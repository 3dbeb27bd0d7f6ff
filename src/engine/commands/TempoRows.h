#pragma once

#include "engine/commands/RowHelpers.h"

/** Tempo, key and sync of the decks. */
namespace CommandTable
{
inline double readSync (CPlatterdex& engine, int deck, int)
{
    return setupOf (engine, deck).sync != 0;
}

inline double readPitch (CPlatterdex& engine, int deck, int)
{
    return deckOf (engine, deck)->tempo.pitch;
}

constexpr CommandRow tempoRows[] {
    {
        .numbers = perDeck (9),
        .name = N_ ("Set Master {d}"),
        .constant = "MASTER_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.transport.setMaster (c.deck); },
        .read = [] (CPlatterdex& e, int deck, int) -> double
        { return e.decks.isStandalone != 0 && e.settings.masterDeck == deck; },
        .feedback = Feedback::lamp,
        .writes = "the deck becomes master",
        .reads = "1 if standalone and this is the master",
    },
    {
        .numbers = perDeck (13),
        .name = N_ ("Sync {d}"),
        .constant = "SYNC_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.transport.toggleSync (c.deck, true); },
        .read = readSync,
        .feedback = Feedback::lamp,
        .writes = "matches tempo and phase once",
        .reads = "the flag",
    },
    {
        .numbers = perDeck (17),
        .name = N_ ("Sync Lock {d}"),
        .constant = "SYNC_LOCK_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.transport.toggleSync (c.deck, false); },
        .read = readSync,
        .feedback = Feedback::lamp,
        .writes = "follows the reference until toggled off",
        .reads = "the flag",
    },
    {
        .numbers = perDeck (21),
        .name = N_ ("Pitch {d}"),
        .constant = "PITCH_{d}",
        .kind = Kind::value,
        .shape = Shape::pitch,
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.transport.setPitch (c.deck, 1.0 - c.value); },
        .read = readPitch,
        .rest = 0.5,
        .absent = 1.0,
        .polarity = Polarity::turned,
        .feedback = Feedback::level,
        .writes = "the fader, reading from high to low",
        .reads = "the pitch, not turned round",
    },
    {
        .numbers = perDeck (25),
        .name = N_ ("Pitch Reset {d}"),
        .constant = "PITCH_RESET_{d}",
        .shape = Shape::resetToCentre,
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.transport.setPitch (c.deck, 0.5); },
        .read = readPitch,
        .absent = 1.0,
        .writes = "pitch to its centre",
        .reads = "the pitch",
    },
    {
        .numbers = perDeck (29),
        .name = N_ ("Pitch Bend Nudge (-4.00%) {d}"),
        .constant = "PITCH_BEND_NUDGE_MINUS_{d}",
        .kind = Kind::state,
        .shape = Shape::held,
        .write = [] (CPlatterdex& e, const CommandCall& c)
        { e.transport.setNudge (c.deck, c.isPressed() ? -1 : 0); },
        .read = [] (CPlatterdex& e, int deck, int) -> double { return deckOf (e, deck)->play.nudge < 0; },
        .feedback = Feedback::lamp,
        .writes = "slower while held",
        .reads = "1 while held",
    },
    {
        .numbers = perDeck (33),
        .name = N_ ("Pitch Bend Nudge (+4.00%) {d}"),
        .constant = "PITCH_BEND_NUDGE_PLUS_{d}",
        .kind = Kind::state,
        .shape = Shape::held,
        .write = [] (CPlatterdex& e, const CommandCall& c)
        { e.transport.setNudge (c.deck, c.isPressed() ? 1 : 0); },
        .read = [] (CPlatterdex& e, int deck, int) -> double { return deckOf (e, deck)->play.nudge > 0; },
        .feedback = Feedback::lamp,
        .writes = "faster while held",
        .reads = "1 while held",
    },
    {
        .numbers = perDeck (37),
        .name = N_ ("Key Tuning {d}"),
        .constant = "KEY_TUNING_{d}",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .write = [] (CPlatterdex& e, const CommandCall& c)
        { e.transport.setKeyTuning (c.deck, (c.value - 0.5) * 24.0); },
        .read = [] (CPlatterdex& e, int deck, int)
        { return juce::jlimit (0.0, 1.0, deckOf (e, deck)->tempo.keyTuning / 24.0 + 0.5); },
        .rest = 0.5,
        .feedback = Feedback::level,
        .writes = "the key, 0 to 1 for -12 to 12 semitones",
        .reads = "the value",
    },
    {
        .numbers = perDeck (41),
        .name = N_ ("Key Lock {d}"),
        .constant = "KEY_LOCK_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c)
        { e.transport.setKeyLock (c.deck, deckOf (e, c.deck)->tempo.keyLock == 0); },
        .read = [] (CPlatterdex& e, int deck, int) -> double { return deckOf (e, deck)->tempo.keyLock != 0; },
        .feedback = Feedback::lamp,
        .writes = "toggles",
        .reads = "the flag",
    },
    {
        .numbers = perDeck (197),
        .name = N_ ("Key Reset {d}"),
        .constant = "KEY_RESET_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.transport.setKeyTuning (c.deck, 0.0); },
        .read = [] (CPlatterdex& e, int deck, int) { return deckOf (e, deck)->tempo.keyTuning.get(); },
        .range = { -12.0, 12.0 },
        .writes = "key to its own",
        .reads = "the key in semitones",
    },
};
}

#pragma once

#include "engine/commands/CommandHelpers.h"

/** Transport, cues, pitch, recorder and what the editor's browser answers. */
namespace CommandTable
{
inline void post (CPlatterdex& engine, int number)
{
    engine.listeners.post (EngineEvent::browserCommand, number);
}

/** The write of a browser's command: the editor answers. */
template <int number>
void browse (CPlatterdex& engine, const CommandCall& call)
{
    post (engine, number + call.deck);
}

/** The same for a knob of steps: +1 is the command `down`, -1 is `up`. */
template <int up, int down>
void browseStep (CPlatterdex& engine, const CommandCall& call)
{
    post (engine, call.step() > 0 ? down : up);
}

inline double readPlaying (CPlatterdex& engine, int deck, int)
{
    return deckOf (engine, deck)->play.on != 0;
}

inline double readSync (CPlatterdex& engine, int deck, int)
{
    return setupOf (engine, deck).sync != 0;
}

inline double readPitch (CPlatterdex& engine, int deck, int)
{
    return deckOf (engine, deck)->tempo.pitch;
}

inline double readStoppedAtCue (CPlatterdex& engine, int deck, int)
{
    return Transport::isStoppedAtCue (*deckOf (engine, deck));
}

inline double readCueSet (CPlatterdex& engine, int deck, int slot)
{
    return deckOf (engine, deck)->marks.cues[static_cast<size_t> (slot)] > emptyCue;
}

inline double readCueEmpty (CPlatterdex& engine, int deck, int slot)
{
    return !(deckOf (engine, deck)->marks.cues[static_cast<size_t> (slot)] > emptyCue);
}

inline void toggleSnap (CPlatterdex& engine, const CommandCall&)
{
    const CallbackLock lock (engine.getCallbackLock(), "snap");
    const auto next = static_cast<int8_t> (engine.settings.deckSetup[0].snap == 0);
    for (auto& setup : engine.settings.deckSetup)
        setup.snap = setup.quantise = next;
}

inline void toggleRecorder (CPlatterdex& engine, const CommandCall&)
{
    engine.toggleRecorder();
}

// clang-format off
constexpr CommandFamily transportFamilies[] {
    { 1, 1, 0, 4, 1, "Play/Pause {d}", "PLAY_PAUSE_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.playPause (c.deck); }, readPlaying, 0, "play or stop", "1 while playing" },
    { 5, 1, 0, 4, 1, "Play Synchronized {d}", "PLAY_SYNCHRONIZED_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.playSynchronized (c.deck); }, readPlaying, 0, "starts in tempo and phase", "1 while playing" },
    { 9, 1, 0, 4, 1, "Set Master {d}", "MASTER_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.setMaster (c.deck); },
      [] (CPlatterdex& e, int deck, int) -> double { return e.decks.isStandalone != 0 && e.settings.masterDeck == deck; }, 0, "the deck becomes master", "1 if standalone and this is the master" },
    { 13, 1, 0, 4, 1, "Sync {d}", "SYNC_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.toggleSync (c.deck, true); }, readSync, 0, "matches tempo and phase once", "the flag" },
    { 17, 1, 0, 4, 1, "Sync Lock {d}", "SYNC_LOCK_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.toggleSync (c.deck, false); }, readSync, 0, "follows the reference until toggled off", "the flag" },
    { 21, 1, 0, 4, 1, "Pitch {d}", "PITCH_{d}", K::value, S::pitch,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.setPitch (c.deck, 1.0 - c.value); }, readPitch, 1, "the fader, reading from high to low", "the pitch, not turned round" },
    { 25, 1, 0, 4, 1, "Pitch Reset {d}", "PITCH_RESET_{d}", K::trigger, S::resetToCentre,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.setPitch (c.deck, 0.5); }, readPitch, 1, "pitch to its centre", "the pitch" },
    { 29, 1, 0, 4, 1, "Pitch Bend Nudge (-4.00%) {d}", "PITCH_BEND_NUDGE_MINUS_{d}", K::state, S::held,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.setNudge (c.deck, c.isPressed() ? -1 : 0); },
      [] (CPlatterdex& e, int deck, int) -> double { return deckOf (e, deck)->play.nudge < 0; }, 0, "slower while held", "1 while held" },
    { 33, 1, 0, 4, 1, "Pitch Bend Nudge (+4.00%) {d}", "PITCH_BEND_NUDGE_PLUS_{d}", K::state, S::held,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.setNudge (c.deck, c.isPressed() ? 1 : 0); },
      [] (CPlatterdex& e, int deck, int) -> double { return deckOf (e, deck)->play.nudge > 0; }, 0, "faster while held", "1 while held" },
    { 37, 1, 0, 4, 1, "Key Tuning {d}", "KEY_TUNING_{d}", K::value, S::continuous,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.setKeyTuning (c.deck, (c.value - 0.5) * 24.0); },
      [] (CPlatterdex& e, int deck, int) { return juce::jlimit (0.0, 1.0, deckOf (e, deck)->tempo.keyTuning / 24.0 + 0.5); }, 0, "the key, 0 to 1 for -12 to 12 semitones", "the value" },
    { 41, 1, 0, 4, 1, "Key Lock {d}", "KEY_LOCK_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.setKeyLock (c.deck, deckOf (e, c.deck)->tempo.keyLock == 0); },
      [] (CPlatterdex& e, int deck, int) -> double { return deckOf (e, deck)->tempo.keyLock != 0; }, 0, "toggles", "the flag" },
    { 45, 1, 0, 4, 1, "Cue {d}", "CUE_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.cue (c.deck, true); }, readStoppedAtCue, 0, "presses Cue, never releases it", "1 if stopped at a cue" },
    { 49, 8, 4, 4, 1, "Set Hot Cue #{n} {d}", "HOT_CUE_{n}_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.jumpToCue (c.deck, c.which); }, readCueSet, 0, "sets an empty slot, else jumps to it", "1 if set" },
    { 81, 8, 4, 4, 1, "Delete Hot Cue #{n} {d}", "DELETE_HOT_CUE_{n}_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.deleteCue (c.deck, c.which); }, readCueEmpty, 0, "empties the slot", "1 if empty" },
    { 189, 1, 0, 4, 1, "Cue/Stutter {d}", "CUE_STUTTER_{d}", K::state, S::held,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.cue (c.deck, c.isPressed()); }, readStoppedAtCue, 0, "presses and releases Cue", "1 if stopped at a cue" },
    { 193, 1, 0, 4, 1, "Rewind {d}", "REWIND_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.rewind (c.deck); }, nothing, 0, "to the track's start", "0" },
    { 197, 1, 0, 4, 1, "Key Reset {d}", "KEY_RESET_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.setKeyTuning (c.deck, 0.0); },
      [] (CPlatterdex& e, int deck, int) { return deckOf (e, deck)->tempo.keyTuning.get(); }, 0, "key to its own", "the key in semitones" },
    { 201, 1, 0, 4, 1, "Jog {d}", "JOG_{d}", K::value, S::jog,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.bendJog (c.deck, c.value, c.arg1, c.arg2); }, nothing, 0, "a step of the wheel, with bend and scratch scale", "0" },
    { 205, 1, 0, 4, 1, "Jog Scratch On {d}", "JOG_SCRATCH_ON_{d}", K::state, S::held,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.setScratch (c.deck, c.isPressed(), false); },
      [] (CPlatterdex& e, int deck, int) -> double { return deckOf (e, deck)->jog.scratchOn != 0; }, 0, "scratch while held", "1 in scratch" },
    { 209, 1, 0, 4, 1, "Seek {d}", "SEEK_{d}", K::value, S::seek,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.seekNormalised (c.deck, c.value); },
      [] (CPlatterdex& e, int deck, int) { const auto* d = deckOf (e, deck); const double frames = d->track.loadedFrames; return frames > 0.0 ? d->heardPosition() / frames : 0.0; }, 0, "the position, 0 to 1 of the track", "the position" },
    { 409, 1, 0, 1, 0, "Playlist Up", "PLAYLIST_UP", K::trigger, S::trigger, browse<409>, nothing, 0, "posted to the editor", "0" },
    { 410, 1, 0, 1, 0, "Playlist Down", "PLAYLIST_DOWN", K::trigger, S::trigger, browse<410>, nothing, 0, "posted to the editor", "0" },
    { 411, 1, 0, 1, 0, "Playlist Page Up", "PLAYLIST_PAGE_UP", K::trigger, S::trigger, browse<411>, nothing, 0, "posted to the editor", "0" },
    { 412, 1, 0, 1, 0, "Playlist Page Down", "PLAYLIST_PAGE_DOWN", K::trigger, S::trigger, browse<412>, nothing, 0, "posted to the editor", "0" },
    { 413, 1, 0, 1, 0, "Playlist Select", "PLAYLIST_SELECT", K::relative, S::stepped, browseStep<409, 410>, nothing, 0, "down for +1, up for -1", "0" },
    { 414, 1, 0, 4, 1, "Playlist Load {d}", "PLAYLIST_LOAD_{d}", K::trigger, S::trigger, browse<414>, nothing, 0, "posted to the editor", "0" },
    { 418, 1, 0, 1, 0, "Playlist Preview", "PLAYLIST_PREVIEW", K::trigger, S::trigger, browse<418>, nothing, 0, "posted to the editor", "0" },
    { 419, 1, 0, 1, 0, "Preview Play/Pause", "PREVIEW_PLAY_PAUSE", K::trigger, S::trigger, browse<419>, nothing, 0, "posted to the editor", "0" },
    { 420, 1, 0, 1, 0, "Directory Up", "DIRECTORY_UP", K::trigger, S::trigger, browse<420>, nothing, 0, "posted to the editor", "0" },
    { 421, 1, 0, 1, 0, "Directory Down", "DIRECTORY_DOWN", K::trigger, S::trigger, browse<421>, nothing, 0, "posted to the editor", "0" },
    { 422, 1, 0, 1, 0, "Directory Select", "DIRECTORY_SELECT", K::relative, S::stepped, browseStep<420, 421>, nothing, 0, "down for +1, up for -1", "0" },
    { 423, 1, 0, 1, 0, "Directory Enter", "DIRECTORY_ENTER", K::trigger, S::trigger, browse<423>, nothing, 0, "posted to the editor", "0" },
    { 424, 1, 0, 1, 0, "Directory Exit", "DIRECTORY_EXIT", K::trigger, S::trigger, browse<424>, nothing, 0, "posted to the editor", "0" },
    { 425, 1, 0, 1, 0, "File Browser Up", "FILE_BROWSER_UP", K::trigger, S::trigger, browse<425>, nothing, 0, "posted to the editor", "0" },
    { 426, 1, 0, 1, 0, "File Browser Down", "FILE_BROWSER_DOWN", K::trigger, S::trigger, browse<426>, nothing, 0, "posted to the editor", "0" },
    { 427, 1, 0, 1, 0, "File Browser Select", "FILE_BROWSER_SELECT", K::relative, S::stepped, browseStep<425, 426>, nothing, 0, "down for +1, up for -1", "0" },
    { 428, 1, 0, 1, 0, "File Browser Enter", "FILE_BROWSER_ENTER", K::trigger, S::trigger, browse<428>, nothing, 0, "posted to the editor", "0" },
    { 429, 1, 0, 1, 0, "File Browser Exit", "FILE_BROWSER_EXIT", K::trigger, S::trigger, browse<429>, nothing, 0, "posted to the editor", "0" },
    { 430, 1, 0, 4, 1, "File Browser Load {d}", "FILE_BROWSER_LOAD_{d}", K::trigger, S::trigger, browse<430>, nothing, 0, "posted to the editor", "0" },
    { 434, 1, 0, 1, 0, "File Browser Preview", "FILE_BROWSER_PREVIEW", K::trigger, S::trigger, browse<434>, nothing, 0, "posted to the editor", "0" },
    { 436, 1, 0, 1, 0, "Snap", "SNAP", K::trigger, S::trigger, toggleSnap,
      [] (CPlatterdex& e, int, int) -> double { return setupOf (e, 0).snap != 0; }, 0, "toggles snap and quantise of all decks", "the flag of deck A" },
    { 461, 1, 0, 4, 1, "Cue/Play {d}", "CUE_PLAY_{d}", K::state, S::held,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.cuePlay (c.deck, c.isPressed()); }, nothing, 0, "stores the cue, plays from release; back to the cue while playing", "0" },
    { 465, 1, 0, 1, 0, "Disk Recorder", "DISK_RECORDER", K::trigger, S::trigger, toggleRecorder,
      [] (CPlatterdex& e, int, int) -> double { return e.recorder.isRecording(); }, 0, "starts or stops the recording", "1 while recording" },
};
// clang-format on
}

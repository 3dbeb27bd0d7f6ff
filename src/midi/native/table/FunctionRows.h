#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

/** All that a control of a surface can be for. The tables of the models name nothing else. */
enum class FunctionId : uint8_t
{
    // Playing
    play,
    stop,
    cue,
    cueGoto,
    cuePlay,
    setCue,
    hotCue,
    storeHotCue,
    deleteHotCue,
    rewind,
    reverse,
    seek,
    // Tempo and key
    sync,
    master,
    tap,
    downbeat,
    pitch,
    pitchReset,
    nudgeMinus,
    nudgePlus,
    keyLock,
    keyTuning,
    keyReset,
    keyMinus,
    keyPlus,
    timecodeOn,
    timecodeMode,
    // Loops
    loop,
    leap,
    loopIn,
    loopOut,
    reloop,
    loopHalf,
    loopDouble,
    loopSize,
    loopBeats,
    rollBeats,
    searchBack,
    searchForward,
    startPoint,
    snap,
    // Jog wheels
    jog,
    jogBend,
    jogScratch,
    jogSearch,
    jogTouch,
    scratchMode,
    searchMode,
    // Mixer
    gain,
    gainReset,
    eqHigh,
    eqMid,
    eqLow,
    eqHighReset,
    eqMidReset,
    eqLowReset,
    eqHighKill,
    eqMidKill,
    eqLowKill,
    volume,
    pfl,
    punch,
    cut,
    balance,
    assignLeft,
    assignRight,
    crossfader,
    crossfaderCurve,
    masterVolume,
    monitorVolume,
    monitorMix,
    phonesSplit,
    level,
    masterLevel,
    // Effects and instruments
    filter,
    filterReset,
    effectOn,
    effectParam,
    effectSelect,
    effectNext,
    dryWet,
    dryWetReset,
    wetOnOff,
    smartKnob,
    smartKnobOn,
    slicegatePad,
    samplerPad,
    samplerVolume,
    samplerLoopSize,
    samplerRecord,
    // Library
    load,
    playlistSelect,
    playlistUp,
    playlistDown,
    preview,
    directorySelect,
    directoryUp,
    directoryDown,
    directoryEnter,
    directoryExit,
    fileSelect,
    fileUp,
    fileDown,
    fileEnter,
    fileExit,
    automix,
    decksShown,
    // Layers of the surface
    shift,
    deckMode,
    deckModeFlip,
    surfaceMode,
    surfaceModeFlip,
    selectDeck,
    nextDeck,

    count ///< of the functions
};

/** A function, and which of its numbered ones, from 0. */
struct Function
{
    FunctionId id = FunctionId::play;
    uint8_t which = 0;

    constexpr Function() noexcept = default;
    constexpr Function (FunctionId i, int w = 0) noexcept : id (i), which (static_cast<uint8_t> (w)) {}
    constexpr bool operator== (const Function&) const noexcept = default;
};

/** The numbered function as people count: nth (hotCue, 1) is the first hot cue. */
constexpr Function nth (FunctionId id, int number) noexcept
{
    return { id, number - 1 };
}

/** The way in which a function acts. */
enum class Act : uint8_t
{
    command,    ///< its command, as the command's kind says: pressed, held, set, stepped
    centre,     ///< its command's value to 0.5
    fullOrNone, ///< its command's value to 0, or from 0 to 1
    nextOfTen,  ///< its command's value to the next of ten choices, round
    stepDown,   ///< its command's value down by a semitone of 24
    stepUp,
    storeCue, ///< the place into a slot
    stop,
    loopBeats, ///< a beat loop of the size of that index; rollBeats while held
    rollBeats,
    reverse, ///< while held
    tap,
    timecode, ///< the deck under its control record, or not; timecodeMode: absolute or relative
    timecodeMode,
    jog, ///< bends or scratches as the deck's state says; the three below do one of these only
    jogBend,
    jogScratch,
    jogSearch,
    touch,       ///< the hand on the wheel
    scratchMode, ///< turns a state of the surface on or off
    searchMode,
    shift,    ///< while held
    deckMode, ///< one of a deck's layers; a flip changes between the first two
    deckModeFlip,
    surfaceMode,
    surfaceModeFlip,
    decksShown, ///< the editor's layout: two decks or four
    selectDeck, ///< the deck of a side of the surface
    nextDeck,
    shown ///< nothing: for lamps only
};

/** The state that a function's lamp shows. */
enum class Light : uint8_t
{
    none,    ///< no lamp can show it
    reading, ///< its command reads above 0; as a ring or meter the reading itself
    held,    ///< the hand is on it
    play,    ///< lit while playing, blinks while stopped at a cue
    sync,    ///< lit while locked, blinks until the tempo is matched once
    loop,    ///< lit in a loop, beat loop or manual
    loaded,  ///< a track is there
    centred, ///< the pitch is at its centre
    full,    ///< the command reads above a half
    reverse,
    timecode,
    timecodeMode,
    shift,
    scratchMode,
    searchMode,
    deckMode,
    deckModeFlip,
    surfaceMode,
    surfaceModeFlip,
    selectDeck,
    nextDeck,
    decksShown
};

/** All there is to say of a function. */
struct FunctionRow
{
    FunctionId id = FunctionId::play;
    std::string_view label {}; ///< as pages and tables print it
    Act act = Act::command;
    std::string_view constant {}; ///< of its command, as the command table writes it; empty for none
    Light light = Light::held;
};

inline constexpr FunctionRow functionRows[] {
    { FunctionId::play, "play", Act::command, "PLAY_PAUSE_{d}", Light::play },
    { FunctionId::stop, "stop", Act::stop },
    { FunctionId::cue, "cue", Act::command, "CUE_STUTTER_{d}", Light::reading },
    { FunctionId::cueGoto, "back to cue", Act::command, "CUE_{d}", Light::reading },
    { FunctionId::cuePlay, "cue play", Act::command, "CUE_PLAY_{d}" },
    { FunctionId::setCue, "set cue", Act::storeCue },
    { FunctionId::hotCue, "hot cue", Act::command, "HOT_CUE_{n}_{d}", Light::reading },
    { FunctionId::storeHotCue, "store hot cue", Act::storeCue, "HOT_CUE_{n}_{d}", Light::reading },
    { FunctionId::deleteHotCue, "delete hot cue", Act::command, "DELETE_HOT_CUE_{n}_{d}", Light::reading },
    { FunctionId::rewind, "to the start", Act::command, "REWIND_{d}" },
    { FunctionId::reverse, "reverse", Act::reverse, {}, Light::reverse },
    { FunctionId::seek, "position", Act::command, "SEEK_{d}", Light::reading },

    { FunctionId::sync, "sync", Act::command, "SYNC_LOCK_{d}", Light::sync },
    { FunctionId::master, "master", Act::command, "MASTER_{d}", Light::reading },
    { FunctionId::tap, "tap", Act::tap },
    { FunctionId::downbeat, "downbeat", Act::command, "DOWNBEAT_{d}" },
    { FunctionId::pitch, "pitch", Act::command, "PITCH_{d}", Light::reading },
    { FunctionId::pitchReset, "pitch reset", Act::command, "PITCH_RESET_{d}", Light::centred },
    { FunctionId::nudgeMinus, "pitch bend minus", Act::command, "PITCH_BEND_NUDGE_MINUS_{d}",
      Light::reading },
    { FunctionId::nudgePlus, "pitch bend plus", Act::command, "PITCH_BEND_NUDGE_PLUS_{d}", Light::reading },
    { FunctionId::keyLock, "key lock", Act::command, "KEY_LOCK_{d}", Light::reading },
    { FunctionId::keyTuning, "key", Act::command, "KEY_TUNING_{d}", Light::reading },
    { FunctionId::keyReset, "key reset", Act::command, "KEY_RESET_{d}" },
    { FunctionId::keyMinus, "key minus", Act::stepDown, "KEY_TUNING_{d}" },
    { FunctionId::keyPlus, "key plus", Act::stepUp, "KEY_TUNING_{d}" },
    { FunctionId::timecodeOn, "timecode on or off", Act::timecode, {}, Light::timecode },
    { FunctionId::timecodeMode, "timecode absolute or relative", Act::timecodeMode, {}, Light::timecodeMode },

    { FunctionId::loop, "beat loop", Act::command, "LOOP_{d}", Light::loop },
    { FunctionId::leap, "rolling loop", Act::command, "LEAP_{d}", Light::reading },
    { FunctionId::loopIn, "loop in", Act::command, "LOOP_IN_{d}", Light::loop },
    { FunctionId::loopOut, "loop out", Act::command, "LOOP_OUT_{d}", Light::loop },
    { FunctionId::reloop, "reloop", Act::command, "RELOOP_{d}", Light::loop },
    { FunctionId::loopHalf, "loop half", Act::command, "LOOP_HALF_{d}" },
    { FunctionId::loopDouble, "loop double", Act::command, "LOOP_DOUBLE_{d}" },
    { FunctionId::loopSize, "loop size", Act::command, "LOOP_SIZE_{d}", Light::reading },
    { FunctionId::loopBeats, "beat loop of size", Act::loopBeats, {}, Light::loop },
    { FunctionId::rollBeats, "rolling loop of size", Act::rollBeats },
    { FunctionId::searchBack, "beat jump back", Act::command, "LOOP_MOVE_BACKWARD_{d}" },
    { FunctionId::searchForward, "beat jump on", Act::command, "LOOP_MOVE_FORWARD_{d}" },
    { FunctionId::startPoint, "start point", Act::command, "START_POINT_{d}", Light::reading },
    { FunctionId::snap, "snap", Act::command, "SNAP", Light::reading },

    { FunctionId::jog, "jog wheel", Act::jog },
    { FunctionId::jogBend, "jog wheel, bends", Act::jogBend },
    { FunctionId::jogScratch, "jog wheel, scratches", Act::jogScratch },
    { FunctionId::jogSearch, "jog wheel, searches", Act::jogSearch },
    { FunctionId::jogTouch, "hand on the jog wheel", Act::touch, "JOG_SCRATCH_ON_{d}" },
    { FunctionId::scratchMode, "scratch mode", Act::scratchMode, {}, Light::scratchMode },
    { FunctionId::searchMode, "search mode", Act::searchMode, {}, Light::searchMode },

    { FunctionId::gain, "gain", Act::command, "GAIN_{d}", Light::reading },
    { FunctionId::gainReset, "gain reset", Act::command, "GAIN_RESET_{d}" },
    { FunctionId::eqHigh, "high", Act::command, "EQ_HIGH_{d}", Light::reading },
    { FunctionId::eqMid, "mid", Act::command, "EQ_MID_{d}", Light::reading },
    { FunctionId::eqLow, "low", Act::command, "EQ_LOW_{d}", Light::reading },
    { FunctionId::eqHighReset, "high reset", Act::command, "EQ_HIGH_RESET_{d}" },
    { FunctionId::eqMidReset, "mid reset", Act::command, "EQ_MID_RESET_{d}" },
    { FunctionId::eqLowReset, "low reset", Act::command, "EQ_LOW_RESET_{d}" },
    { FunctionId::eqHighKill, "high kill", Act::command, "EQ_HIGH_KILL_{d}", Light::reading },
    { FunctionId::eqMidKill, "mid kill", Act::command, "EQ_MID_KILL_{d}", Light::reading },
    { FunctionId::eqLowKill, "low kill", Act::command, "EQ_LOW_KILL_{d}", Light::reading },
    { FunctionId::volume, "volume", Act::command, "VOLUME_{d}", Light::reading },
    { FunctionId::pfl, "PFL", Act::command, "PFL_{d}", Light::reading },
    { FunctionId::punch, "punch", Act::command, "PUNCH_{d}", Light::reading },
    { FunctionId::cut, "cut", Act::command, "CUT_{d}", Light::reading },
    { FunctionId::balance, "balance", Act::command, "BALANCE_{d}", Light::reading },
    { FunctionId::assignLeft, "crossfader left", Act::command, "CROSSFADER_ASSIGN_LEFT_{d}", Light::reading },
    { FunctionId::assignRight, "crossfader right", Act::command, "CROSSFADER_ASSIGN_RIGHT_{d}",
      Light::reading },
    { FunctionId::crossfader, "crossfader", Act::command, "CROSSFADER", Light::reading },
    { FunctionId::crossfaderCurve, "crossfader curve", Act::command, "CROSSFADER_CURVE", Light::reading },
    { FunctionId::masterVolume, "master volume", Act::command, "MASTER_VOLUME", Light::reading },
    { FunctionId::monitorVolume, "headphone volume", Act::command, "MONITOR_VOLUME", Light::reading },
    { FunctionId::monitorMix, "headphone mix", Act::command, "MONITOR_MIX", Light::reading },
    { FunctionId::phonesSplit, "headphone split", Act::command, "MONITOR_PHONE_SPLIT", Light::reading },
    { FunctionId::level, "level", Act::shown, "LEVEL_{d}", Light::reading },
    { FunctionId::masterLevel, "master level", Act::shown, "MASTER_LEVEL_{n}", Light::reading },

    { FunctionId::filter, "filter", Act::command, "FILTER_{d}", Light::reading },
    { FunctionId::filterReset, "filter off", Act::centre, "FILTER_{d}" },
    { FunctionId::effectOn, "effect on", Act::command, "EFFECT_ON_{n}_GROUP_{d}", Light::reading },
    { FunctionId::effectParam, "effect parameter", Act::command, "EFFECT_PARAM_{n}_GROUP_{d}",
      Light::reading },
    { FunctionId::effectSelect, "effect choice", Act::command, "EFFECT_SELECT_{n}_GROUP_{d}",
      Light::reading },
    { FunctionId::effectNext, "next effect", Act::nextOfTen, "EFFECT_SELECT_{n}_GROUP_{d}" },
    { FunctionId::dryWet, "effects dry/wet", Act::command, "FX_DRY_WET_GROUP_{d}", Light::reading },
    { FunctionId::dryWetReset, "effects dry", Act::command, "FX_DRY_WET_RESET_GROUP_{d}", Light::reading },
    { FunctionId::wetOnOff, "effects wet or dry", Act::fullOrNone, "FX_DRY_WET_GROUP_{d}", Light::full },
    { FunctionId::smartKnob, "SmartKnob", Act::command, "SMARTKNOB_{n}_{d}", Light::reading },
    { FunctionId::smartKnobOn, "SmartKnob on", Act::command, "SMARTKNOB_{n}_ON_{d}", Light::reading },
    { FunctionId::slicegatePad, "Slicegate pad", Act::command, "SLICEGATE_PAD_{d}_{n}", Light::reading },
    { FunctionId::samplerPad, "sampler pad", Act::command, "SAMPLER_PLAY_PAD_{n}", Light::reading },
    { FunctionId::samplerVolume, "sampler volume", Act::command, "SAMPLER_MASTER_VOLUME", Light::reading },
    { FunctionId::samplerLoopSize, "sampler loop size", Act::command, "SAMPLER_LOOP_SIZE", Light::reading },
    { FunctionId::samplerRecord, "sampler records", Act::command, "SAMPLER_RECORD_LOOP", Light::reading },

    { FunctionId::load, "load", Act::command, "PLAYLIST_LOAD_{d}", Light::loaded },
    { FunctionId::playlistSelect, "list", Act::command, "PLAYLIST_SELECT" },
    { FunctionId::playlistUp, "list up", Act::command, "PLAYLIST_UP" },
    { FunctionId::playlistDown, "list down", Act::command, "PLAYLIST_DOWN" },
    { FunctionId::preview, "preview", Act::command, "PLAYLIST_PREVIEW" },
    { FunctionId::directorySelect, "sources", Act::command, "DIRECTORY_SELECT" },
    { FunctionId::directoryUp, "sources up", Act::command, "DIRECTORY_UP" },
    { FunctionId::directoryDown, "sources down", Act::command, "DIRECTORY_DOWN" },
    { FunctionId::directoryEnter, "open source", Act::command, "DIRECTORY_ENTER" },
    { FunctionId::directoryExit, "close source", Act::command, "DIRECTORY_EXIT" },
    { FunctionId::fileSelect, "files", Act::command, "FILE_BROWSER_SELECT" },
    { FunctionId::fileUp, "files up", Act::command, "FILE_BROWSER_UP" },
    { FunctionId::fileDown, "files down", Act::command, "FILE_BROWSER_DOWN" },
    { FunctionId::fileEnter, "open folder", Act::command, "FILE_BROWSER_ENTER" },
    { FunctionId::fileExit, "close folder", Act::command, "FILE_BROWSER_EXIT" },
    { FunctionId::automix, "automix", Act::command, "AUTOMIX_ON_OFF", Light::reading },
    { FunctionId::decksShown, "two or four decks shown", Act::decksShown, {}, Light::decksShown },

    { FunctionId::shift, "shift", Act::shift, {}, Light::shift },
    { FunctionId::deckMode, "pad layer", Act::deckMode, {}, Light::deckMode },
    { FunctionId::deckModeFlip, "other pad layer", Act::deckModeFlip, {}, Light::deckModeFlip },
    { FunctionId::surfaceMode, "layer of the surface", Act::surfaceMode, {}, Light::surfaceMode },
    { FunctionId::surfaceModeFlip,
      "other layer of the surface",
      Act::surfaceModeFlip,
      {},
      Light::surfaceModeFlip },
    { FunctionId::selectDeck, "deck", Act::selectDeck, {}, Light::selectDeck },
    { FunctionId::nextDeck, "other deck", Act::nextDeck, {}, Light::nextDeck },
};

inline constexpr auto functionCount = static_cast<size_t> (FunctionId::count);

/** True if the rows stand in the order of the functions, so that each is found by its number. */
consteval bool functionRowsAreInOrder()
{
    size_t next = 0;
    for (const auto& row : functionRows)
        if (static_cast<size_t> (row.id) != next++)
            return false;
    return next == functionCount;
}
static_assert (functionRowsAreInOrder());

constexpr const FunctionRow& rowOf (FunctionId id) noexcept
{
    return functionRows[static_cast<size_t> (id)];
}

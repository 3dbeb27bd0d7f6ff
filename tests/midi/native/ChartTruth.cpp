#include "ChartTruth.h"

#include <cmath>

namespace ChartTruth
{
namespace
{
using Names = std::vector<juce::String>;

/** A wheel's first message in scratch mode says no more than that a hand is there; in a second layer it is a filter. */
const Names turned { "bend", "jog", "position", "scratch", "FILTER_" };

/** Effects of inputs by their names; those with a number at the end stand without it. */
const std::map<juce::String, Names> effects {
    { "play", { "PLAY_PAUSE_" } },
    { "stop", { "PLAY_PAUSE_" } },
    { "brake", { "PLAY_PAUSE_" } },
    { "pause", { "PLAY_PAUSE_" } },
    { "cue", { "CUE_STUTTER_", "cue", "hot cue", "position" } },
    { "cue goto", { "CUE_", "cue", "hot cue", "position" } },
    { "cue play", { "PLAY_PAUSE_", "hot cue" } },
    { "set cue", { "hot cue" } },
    { "hot cue", { "hot cue", "position" } },
    { "delete hot cue", { "hot cue" } },
    { "back to top", { "position" } },
    { "reverse", { "reverse" } },
    { "censor", { "reverse" } },
    { "key lock", { "KEY_LOCK_" } },
    { "key tuning", { "KEY_TUNING_" } },
    { "key reset", { "KEY_TUNING_" } },
    { "key minus", { "KEY_TUNING_" } },
    { "key plus", { "KEY_TUNING_" } },
    { "pfl", { "PFL_" } },
    { "sync", { "SYNC_LOCK_" } },
    { "set master", { "MASTER_" } },
    { "tap", { "taps" } },
    { "downbeat", { "downbeat" } },
    { "eq high", { "EQ_HIGH_" } },
    { "eq mid", { "EQ_MID_" } },
    { "eq low", { "EQ_LOW_" } },
    { "gain", { "GAIN_" } },
    { "eq high kill", { "EQ_HIGH_KILL_" } },
    { "eq mid kill", { "EQ_MID_KILL_" } },
    { "eq low kill", { "EQ_LOW_KILL_" } },
    { "volume", { "VOLUME_" } },
    { "volume msb", { "VOLUME_" } },
    { "balance", { "BALANCE_" } },
    { "filter", { "FILTER_" } },
    { "pitch fader", { "PITCH_" } },
    { "pitch fader msb", { "PITCH_" } },
    { "pitch wheel", { "PITCH_" } },
    { "pitch reset", { "PITCH_" } },
    { "pitch minus", { "PITCH_", "PITCH_BEND_NUDGE_MINUS_" } },
    { "pitch plus", { "PITCH_", "PITCH_BEND_NUDGE_PLUS_" } },
    { "pitch bend minus", { "PITCH_BEND_NUDGE_MINUS_" } },
    { "pitch bend plus", { "PITCH_BEND_NUDGE_PLUS_" } },
    { "jog turn", turned },
    { "jog turn clockwise", turned },
    { "jog turn counter-clockwise", turned },
    { "jog turn scratch", { "jog" } },
    { "jog touch", { "scratch" } },
    { "scratch mode", { "scratch mode" } },
    { "vinyl mode", { "scratch mode" } },
    { "search mode", { "search mode" } },
    { "search back", { "position", "loop in" } },
    { "search forward", { "position", "loop in" } },
    { "beat jump back", { "position", "loop in" } },
    { "beat jump forward", { "position", "loop in" } },
    { "auto loop", { "LOOP_" } },
    { "loop", { "LOOP_", "RELOOP_", "loop mode" } },
    { "loop in", { "loop in" } },
    { "loop out", { "loop out", "loop mode" } },
    { "reloop", { "loop mode" } },
    { "loop half", { "LOOP_SIZE_" } },
    { "loop double", { "LOOP_SIZE_" } },
    { "quantize", { "SNAP" } },
    { "crossfader", { "CROSSFADER" } },
    { "crossfader msb", { "CROSSFADER" } },
    { "crossfader curve", { "CROSSFADER_CURVE" } },
    { "master volume", { "MASTER_VOLUME" } },
    { "headphone mix", { "MONITOR_MIX" } },
    { "headphone volume", { "MONITOR_VOLUME" } },
    { "phones split", { "MONITOR_PHONE_SPLIT" } },
    { "sampler volume", { "SAMPLER_MASTER_VOLUME" } },
    { "load", { "load" } },
    { "browse encoder", { "browse" } },
    { "browse up", { "browse" } },
    { "browse down", { "browse" } },
    { "previous track", { "browse", "position" } },
    { "next track", { "browse", "position" } },
    { "shift", { "shift" } },
    { "automix", { "AUTOMIX_ON_OFF" } },
};

/** "hot cue 3" to "hot cue". */
juce::String withoutNumber (const juce::String& name)
{
    return name.trimCharactersAtEnd ("0123456789").trimEnd();
}

Shown lit (bool isOn, bool blinks = false)
{
    return { isOn ? 1.0 : 0.0, blinks };
}

/** Lamps that a command's reading tells of, by their names without numbers. */
const std::map<juce::String, const char*> readings {
    { "key lock", "KEY_LOCK_" },
    { "pfl", "PFL_" },
    { "eq high kill", "EQ_HIGH_KILL_" },
    { "eq mid kill", "EQ_MID_KILL_" },
    { "eq low kill", "EQ_LOW_KILL_" },
    { "punch in", "PUNCH_" },
    { "gain kill", "CUT_" },
    { "pitch bend minus", "PITCH_BEND_NUDGE_MINUS_" },
    { "pitch bend plus", "PITCH_BEND_NUDGE_PLUS_" },
    { "quantize", "SNAP" },
    { "automix", "AUTOMIX_ON_OFF" },
    { "phones split", "MONITOR_PHONE_SPLIT" },
    { "cue", "CUE_STUTTER_" },
    { "level meter", "LEVEL_" },
    { "level meter left", "MASTER_LEVEL_1" },
    { "level meter right", "MASTER_LEVEL_2" },
    { "master level meter left", "MASTER_LEVEL_1" },
    { "master level meter right", "MASTER_LEVEL_2" },
    { "song progress ring", "SEEK_" },
};

/** Lamps of buttons that do something once, or while they are held: lit under the hand. */
const std::set<juce::String> heldLamps { "tap",       "downbeat",    "search back",    "search forward",
                                         "loop half", "loop double", "beat jump back", "beat jump forward",
                                         "cue play",  "set cue" };

bool isOneOf (const juce::String& name, std::initializer_list<const char*> names)
{
    return std::ranges::any_of (names, [&name] (const auto* each) { return name == each; });
}
}

std::vector<juce::String> effectsOf (const ChartRow& row)
{
    const auto name = row.function();
    const auto found = effects.find (name);
    const auto numbered = effects.find (withoutNumber (name));
    return found != effects.end() ? found->second : numbered != effects.end() ? numbered->second : Names {};
}

bool isOfItsDeckAlone (const ChartRow& row)
{
    const auto names = effectsOf (row);
    return row.deckIndex() >= 0 && !names.empty() && names.front().endsWith ("_")
           && row.function() != "set master";
}

std::optional<Shown> shownBy (ChartFixture& fixture, const ChartRow& lamp)
{
    const auto name = lamp.function().replace (" blink", "");
    const auto d = lamp.deckIndex();
    if (const auto found = readings.find (name); found != readings.end())
    {
        const auto isOfDeck = juce::String (found->second).endsWith ("_");
        if (isOfDeck && d < 0)
            return {};
        const auto number = CommandTable::numberOf (found->second, std::max (0, d));
        return Shown { static_cast<double> (fixture.engine->getParameter (number)) };
    }
    if (d < 0)
        return {};
    auto& engine = *fixture.engine;
    const auto& player = fixture.deck (d);
    const auto i = static_cast<size_t> (d);
    if (name.startsWith ("level meter segment ")) // "3 of 12": lit from its middle on
    {
        const auto part = name.upToLastOccurrenceOf (" of ", false, false).getTrailingIntValue();
        const auto level = static_cast<double> (engine.getParameter (CommandTable::numberOf ("LEVEL_", d)));
        return lit (level * name.getTrailingIntValue() >= part - 0.5);
    }
    if (name == "play")
        return lit (player.play.on != 0, engine.transport.isStoppedAtCue (player));
    if (name == "sync")
    {
        const auto isOn = engine.settings.deckSetup[i].sync != 0;
        return lit (isOn, isOn && player.sync.oneShot != 0);
    }
    if (name.startsWith ("hot cue "))
        if (const auto cue = name.substring (8).getIntValue(); cue > 0)
            return lit (player.marks.cues[static_cast<size_t> (cue - 1)] != emptyCue);
    if (isOneOf (name, { "auto loop", "loop in", "loop out", "reloop", "loop on colour" }))
        return lit (player.loops.mode != noLoop);
    if (name == "load")
        return lit (!player.isEmpty());
    if (isOneOf (name, { "pitch reset", "pitch centre" }))
        return lit (std::abs (player.tempo.pitch - 0.5) < 0.001);
    if (isOneOf (name, { "scratch mode", "vinyl mode" }))
        return lit (fixture.state().scratchMode[i] != 0);
    if (name == "search mode")
        return lit (fixture.state().searchMode[i] != 0);
    if (name == "shift")
        return lit (fixture.state().isShifted (d));
    if (isOneOf (name, { "reverse", "censor" }))
        return lit (player.play.reverse != 0);
    if (heldLamps.contains (name))
        return lit (fixture.isHeld (name, d));
    return {};
}

bool shows (const ChartRow& lamp, int value, const Shown& shown)
{
    if (lamp.form == "ownBlink")
        return value == (shown.blinks ? lamp.on : lamp.off);
    if (lamp.form == "fullScale" || lamp.form.startsWith ("scale"))
        return value == std::lround (lamp.off + shown.share * (lamp.on - lamp.off));
    if (shown.blinks && lamp.blink == ChartRow::byTurns)
        return value == lamp.on || value == lamp.off;
    return value == (shown.blinks ? lamp.blink : shown.share > 0.0 ? lamp.on : lamp.off);
}
}

#include "ui/KeyboardCommands.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"

#include <string_view>
#include <vector>

namespace
{
using Key = juce::KeyPress;

constexpr int ctrl = juce::ModifierKeys::ctrlModifier;
constexpr int shift = juce::ModifierKeys::shiftModifier;
constexpr int ctrlShift = juce::ModifierKeys::ctrlModifier | juce::ModifierKeys::shiftModifier;
constexpr float fadeStep = 0.05f;

// clang-format off
const KeyBinding table[] {
    { Key::spaceKey,  0, "Space",  "PLAY_PAUSE_A",             "play or stop" },
    { 'Q',            0, "Q",      "CUE_STUTTER_A",            "cue (hold)" },
    { 'W',            0, "W",      "SYNC_LOCK_A",              "sync on or off" },
    { 'E',            0, "E",      "PITCH_BEND_NUDGE_MINUS_A", "slower (hold)" },
    { 'R',            0, "R",      "PITCH_BEND_NUDGE_PLUS_A",  "faster (hold)" },
    { '1',            0, "1",      "HOT_CUE_1_A",              "hot cue 1" },
    { '2',            0, "2",      "HOT_CUE_2_A",              "hot cue 2" },
    { '3',            0, "3",      "HOT_CUE_3_A",              "hot cue 3" },
    { '4',            0, "4",      "HOT_CUE_4_A",              "hot cue 4" },
    { 'S',            0, "S",      "LOOP_A",                   "loop on or off" },
    { 'A',            0, "A",      "LOOP_HALF_A",              "halve the loop" },
    { 'D',            0, "D",      "LOOP_DOUBLE_A",            "double the loop" },
    { 'T',            0, "T",      "PFL_A",                    "PFL on or off" },
    { Key::returnKey, 0, "Return", "PLAY_PAUSE_B",             "play or stop" },
    { 'U',            0, "U",      "CUE_STUTTER_B",            "cue (hold)" },
    { 'I',            0, "I",      "SYNC_LOCK_B",              "sync on or off" },
    { 'O',            0, "O",      "PITCH_BEND_NUDGE_MINUS_B", "slower (hold)" },
    { 'P',            0, "P",      "PITCH_BEND_NUDGE_PLUS_B",  "faster (hold)" },
    { '7',            0, "7",      "HOT_CUE_1_B",              "hot cue 1" },
    { '8',            0, "8",      "HOT_CUE_2_B",              "hot cue 2" },
    { '9',            0, "9",      "HOT_CUE_3_B",              "hot cue 3" },
    { '0',            0, "0",      "HOT_CUE_4_B",              "hot cue 4" },
    { 'K',            0, "K",      "LOOP_B",                   "loop on or off" },
    { 'J',            0, "J",      "LOOP_HALF_B",              "halve the loop" },
    { 'L',            0, "L",      "LOOP_DOUBLE_B",            "double the loop" },
    { 'Y',            0, "Y",      "PFL_B",                    "PFL on or off" },
    { Key::F5Key,     0, "F5",     "PLAY_PAUSE_C",             "play or stop" },
    { Key::F6Key,     0, "F6",     "CUE_STUTTER_C",            "cue (hold)" },
    { Key::F7Key,     0, "F7",     "PITCH_BEND_NUDGE_MINUS_C", "slower (hold)" },
    { Key::F8Key,     0, "F8",     "PITCH_BEND_NUDGE_PLUS_C",  "faster (hold)" },
    { Key::F9Key,     0, "F9",     "PLAY_PAUSE_D",             "play or stop" },
    { Key::F10Key,    0, "F10",    "CUE_STUTTER_D",            "cue (hold)" },
    { Key::F11Key,    0, "F11",    "PITCH_BEND_NUDGE_MINUS_D", "slower (hold)" },
    { Key::F12Key,    0, "F12",    "PITCH_BEND_NUDGE_PLUS_D",  "faster (hold)" },
    { ',',            0, ",",      "CROSSFADER",               "crossfader to the left", -fadeStep },
    { '.',            0, ".",      "CROSSFADER",               "crossfader to the right", fadeStep },
    { 'Z',            0, "Z",      "AUTO_CROSSFADER_LEFT",     "fade to the left" },
    { 'X',            0, "X",      "AUTO_CROSSFADER_RIGHT",    "fade to the right" },
    { 'Q',        shift, "Shift+Q", "SAMPLER_PLAY_PAD_1",      "sampler pad 1 (hold)" },
    { 'W',        shift, "Shift+W", "SAMPLER_PLAY_PAD_2",      "sampler pad 2 (hold)" },
    { 'E',        shift, "Shift+E", "SAMPLER_PLAY_PAD_3",      "sampler pad 3 (hold)" },
    { 'R',        shift, "Shift+R", "SAMPLER_PLAY_PAD_4",      "sampler pad 4 (hold)" },
    { 'T',        shift, "Shift+T", "SAMPLER_PLAY_PAD_5",      "sampler pad 5 (hold)" },
    { 'Y',        shift, "Shift+Y", "SAMPLER_PLAY_PAD_6",      "sampler pad 6 (hold)" },
    { 'U',        shift, "Shift+U", "SAMPLER_PLAY_PAD_7",      "sampler pad 7 (hold)" },
    { 'I',        shift, "Shift+I", "SAMPLER_PLAY_PAD_8",      "sampler pad 8 (hold)" },
    { 'A',        shift, "Shift+A", "SAMPLER_PLAY_PAD_9",      "sampler pad 9 (hold)" },
    { 'S',        shift, "Shift+S", "SAMPLER_PLAY_PAD_10",     "sampler pad 10 (hold)" },
    { 'D',        shift, "Shift+D", "SAMPLER_PLAY_PAD_11",     "sampler pad 11 (hold)" },
    { 'F',        shift, "Shift+F", "SAMPLER_PLAY_PAD_12",     "sampler pad 12 (hold)" },
    { 'G',        shift, "Shift+G", "SAMPLER_PLAY_PAD_13",     "sampler pad 13 (hold)" },
    { 'H',        shift, "Shift+H", "SAMPLER_PLAY_PAD_14",     "sampler pad 14 (hold)" },
    { 'J',        shift, "Shift+J", "SAMPLER_PLAY_PAD_15",     "sampler pad 15 (hold)" },
    { 'K',        shift, "Shift+K", "SAMPLER_PLAY_PAD_16",     "sampler pad 16 (hold)" },
    { Key::F1Key,     0, "F1",     nullptr, "load a track", 0.0f, KeyAction::load, 0 },
    { Key::F2Key,     0, "F2",     nullptr, "load a track", 0.0f, KeyAction::load, 1 },
    { Key::F3Key,     0, "F3",     nullptr, "load a track", 0.0f, KeyAction::load, 2 },
    { Key::F4Key,     0, "F4",     nullptr, "load a track", 0.0f, KeyAction::load, 3 },
    { 'N',            0, "N",      nullptr, "load the selected song onto a free deck", 0.0f, KeyAction::loadFree },
    { Key::tabKey,    0, "Tab",    nullptr, "keys to the songs (Esc: back)", 0.0f, KeyAction::songs },
    { 'F',         ctrl, "Ctrl+F", nullptr, "search songs", 0.0f, KeyAction::search },
    { 'C',         ctrl, "Ctrl+C", nullptr, "coloured waveform on or off", 0.0f, KeyAction::spectralWaveform },
    { 'Z',         ctrl, "Ctrl+Z", nullptr, "undo cue or grid edit", 0.0f, KeyAction::undo },
    { 'Z',    ctrlShift, "Ctrl+Shift+Z", nullptr, "redo", 0.0f, KeyAction::redo },
};
// clang-format on

/** A command whose part does not exist yet has no key. */
std::vector<KeyBinding> builtBindings()
{
    std::vector<KeyBinding> built;
    for (const auto& binding : table)
        if (binding.constant == nullptr
            || !CommandTable::isUnbuilt (CommandTable::numberOf (binding.constant)))
            built.push_back (binding);
    return built;
}
}

int KeyBinding::deck() const
{
    if (constant == nullptr)
        return actionDeck;
    const auto command = CommandTable::find (CommandTable::numberOf (constant));
    return command && command->numbers.decks > 1 ? command.deck : -1;
}

std::span<const KeyBinding> keyBindings()
{
    static const auto bindings = builtBindings();
    return bindings;
}

KeyboardCommands::KeyboardCommands (CPlatterdex& e, std::function<bool (int)> keyDown)
    : engine (e),
      isKeyDown (std::move (keyDown))
{
    static_assert (std::size (table) <= maxBindings);
    const auto bindings = keyBindings();
    for (size_t i = 0; i < bindings.size(); ++i)
        commands[i] = bindings[i].constant != nullptr ? CommandTable::numberOf (bindings[i].constant) : 0;
}

bool KeyboardCommands::keyPressed (const juce::KeyPress& key)
{
    const auto bindings = keyBindings();
    const auto modifiers = key.getModifiers().getRawFlags() & juce::ModifierKeys::allKeyboardModifiers;
    const auto code = static_cast<int> (
        juce::CharacterFunctions::toUpperCase (static_cast<juce::juce_wchar> (key.getKeyCode())));
    for (size_t i = 0; i < bindings.size(); ++i)
    {
        const auto& binding = bindings[i];
        if ((binding.keyCode != key.getKeyCode() && binding.keyCode != code)
            || binding.modifiers != modifiers)
            continue;
        if (!down[i] || binding.step != 0.0f)
            press (i);
        return true;
    }
    return false;
}

void KeyboardCommands::press (size_t i)
{
    const auto& binding = keyBindings()[i];
    down[i] = true;
    if (const auto deck = binding.deck(); deck >= 0 && onDeck != nullptr)
        onDeck (deck);
    if (binding.step != 0.0f)
        engine.edit (commands[i],
                     juce::jlimit (0.0f, 1.0f, engine.getParameter (commands[i]) + binding.step));
    else if (binding.constant != nullptr)
        engine.edit (commands[i], 1.0f);
    else if (onAction != nullptr)
        onAction (binding.action, binding.actionDeck);
}

bool KeyboardCommands::keyStateChanged()
{
    auto any = false;
    const auto bindings = keyBindings();
    for (size_t i = 0; i < bindings.size(); ++i)
        if (down[i] && !isKeyDown (bindings[i].keyCode))
        {
            keyReleased (i);
            any = true;
        }
    return any;
}

void KeyboardCommands::releaseAll()
{
    for (size_t i = 0; i < keyBindings().size(); ++i)
        if (down[i])
            keyReleased (i);
}

void KeyboardCommands::keyReleased (size_t binding)
{
    down[binding] = false;
    if (commands[binding] != 0 && CommandTable::find (commands[binding])->kind == CommandKind::state)
        engine.edit (commands[binding], 0.0f);
}

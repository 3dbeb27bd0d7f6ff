#include "ui/command/KeyboardCommands.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"
#include "support/language/Translate.h"

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
    { Key::spaceKey,  0, N_ ("Space"),  "PLAY_PAUSE_A",             N_ ("play or stop") },
    { 'Q',            0, "Q",      "CUE_STUTTER_A",            N_ ("cue (hold)") },
    { 'W',            0, "W",      "SYNC_LOCK_A",              N_ ("sync on or off") },
    { 'E',            0, "E",      "PITCH_BEND_NUDGE_MINUS_A", N_ ("slower (hold)") },
    { 'R',            0, "R",      "PITCH_BEND_NUDGE_PLUS_A",  N_ ("faster (hold)") },
    { '1',            0, "1",      "HOT_CUE_1_A",              N_ ("hot cue 1") },
    { '2',            0, "2",      "HOT_CUE_2_A",              N_ ("hot cue 2") },
    { '3',            0, "3",      "HOT_CUE_3_A",              N_ ("hot cue 3") },
    { '4',            0, "4",      "HOT_CUE_4_A",              N_ ("hot cue 4") },
    { 'S',            0, "S",      "LOOP_A",                   N_ ("loop on or off") },
    { 'A',            0, "A",      "LOOP_HALF_A",              N_ ("halve the loop") },
    { 'D',            0, "D",      "LOOP_DOUBLE_A",            N_ ("double the loop") },
    { 'T',            0, "T",      "PFL_A",                    N_ ("PFL on or off") },
    { Key::returnKey, 0, N_ ("Return"), "PLAY_PAUSE_B",             N_ ("play or stop") },
    { 'U',            0, "U",      "CUE_STUTTER_B",            N_ ("cue (hold)") },
    { 'I',            0, "I",      "SYNC_LOCK_B",              N_ ("sync on or off") },
    { 'O',            0, "O",      "PITCH_BEND_NUDGE_MINUS_B", N_ ("slower (hold)") },
    { 'P',            0, "P",      "PITCH_BEND_NUDGE_PLUS_B",  N_ ("faster (hold)") },
    { '7',            0, "7",      "HOT_CUE_1_B",              N_ ("hot cue 1") },
    { '8',            0, "8",      "HOT_CUE_2_B",              N_ ("hot cue 2") },
    { '9',            0, "9",      "HOT_CUE_3_B",              N_ ("hot cue 3") },
    { '0',            0, "0",      "HOT_CUE_4_B",              N_ ("hot cue 4") },
    { 'K',            0, "K",      "LOOP_B",                   N_ ("loop on or off") },
    { 'J',            0, "J",      "LOOP_HALF_B",              N_ ("halve the loop") },
    { 'L',            0, "L",      "LOOP_DOUBLE_B",            N_ ("double the loop") },
    { 'Y',            0, "Y",      "PFL_B",                    N_ ("PFL on or off") },
    { Key::F5Key,     0, "F5",     "PLAY_PAUSE_C",             N_ ("play or stop") },
    { Key::F6Key,     0, "F6",     "CUE_STUTTER_C",            N_ ("cue (hold)") },
    { Key::F7Key,     0, "F7",     "PITCH_BEND_NUDGE_MINUS_C", N_ ("slower (hold)") },
    { Key::F8Key,     0, "F8",     "PITCH_BEND_NUDGE_PLUS_C",  N_ ("faster (hold)") },
    { Key::F9Key,     0, "F9",     "PLAY_PAUSE_D",             N_ ("play or stop") },
    { Key::F10Key,    0, "F10",    "CUE_STUTTER_D",            N_ ("cue (hold)") },
    { Key::F11Key,    0, "F11",    "PITCH_BEND_NUDGE_MINUS_D", N_ ("slower (hold)") },
    { Key::F12Key,    0, "F12",    "PITCH_BEND_NUDGE_PLUS_D",  N_ ("faster (hold)") },
    { ',',            0, ",",      "CROSSFADER",               N_ ("crossfader to the left"), -fadeStep },
    { '.',            0, ".",      "CROSSFADER",               N_ ("crossfader to the right"), fadeStep },
    { 'Z',            0, "Z",      "AUTO_CROSSFADER_LEFT",     N_ ("fade to the left") },
    { 'X',            0, "X",      "AUTO_CROSSFADER_RIGHT",    N_ ("fade to the right") },
    { 'Q',        shift, "Shift+Q", "SAMPLER_PLAY_PAD_1",      N_ ("sampler pad 1 (hold)") },
    { 'W',        shift, "Shift+W", "SAMPLER_PLAY_PAD_2",      N_ ("sampler pad 2 (hold)") },
    { 'E',        shift, "Shift+E", "SAMPLER_PLAY_PAD_3",      N_ ("sampler pad 3 (hold)") },
    { 'R',        shift, "Shift+R", "SAMPLER_PLAY_PAD_4",      N_ ("sampler pad 4 (hold)") },
    { 'T',        shift, "Shift+T", "SAMPLER_PLAY_PAD_5",      N_ ("sampler pad 5 (hold)") },
    { 'Y',        shift, "Shift+Y", "SAMPLER_PLAY_PAD_6",      N_ ("sampler pad 6 (hold)") },
    { 'U',        shift, "Shift+U", "SAMPLER_PLAY_PAD_7",      N_ ("sampler pad 7 (hold)") },
    { 'I',        shift, "Shift+I", "SAMPLER_PLAY_PAD_8",      N_ ("sampler pad 8 (hold)") },
    { 'A',        shift, "Shift+A", "SAMPLER_PLAY_PAD_9",      N_ ("sampler pad 9 (hold)") },
    { 'S',        shift, "Shift+S", "SAMPLER_PLAY_PAD_10",     N_ ("sampler pad 10 (hold)") },
    { 'D',        shift, "Shift+D", "SAMPLER_PLAY_PAD_11",     N_ ("sampler pad 11 (hold)") },
    { 'F',        shift, "Shift+F", "SAMPLER_PLAY_PAD_12",     N_ ("sampler pad 12 (hold)") },
    { 'G',        shift, "Shift+G", "SAMPLER_PLAY_PAD_13",     N_ ("sampler pad 13 (hold)") },
    { 'H',        shift, "Shift+H", "SAMPLER_PLAY_PAD_14",     N_ ("sampler pad 14 (hold)") },
    { 'J',        shift, "Shift+J", "SAMPLER_PLAY_PAD_15",     N_ ("sampler pad 15 (hold)") },
    { 'K',        shift, "Shift+K", "SAMPLER_PLAY_PAD_16",     N_ ("sampler pad 16 (hold)") },
    { Key::F1Key, shift, "Shift+F1", nullptr, N_ ("load a track"), 0.0f, KeyAction::load, 0 },
    { Key::F2Key, shift, "Shift+F2", nullptr, N_ ("load a track"), 0.0f, KeyAction::load, 1 },
    { Key::F3Key, shift, "Shift+F3", nullptr, N_ ("load a track"), 0.0f, KeyAction::load, 2 },
    { Key::F4Key, shift, "Shift+F4", nullptr, N_ ("load a track"), 0.0f, KeyAction::load, 3 },
    { Key::F1Key,     0, "F1",     nullptr, N_ ("help on what is under the mouse"), 0.0f, KeyAction::help },
    { 'N',            0, "N",      nullptr, N_ ("load the selected song onto a free deck"), 0.0f, KeyAction::loadFree },
    { Key::tabKey,    0, N_ ("Tab"),    nullptr, N_ ("keys to the songs (Esc: back)"), 0.0f, KeyAction::songs },
    { 'F',         ctrl, "Ctrl+F", nullptr, N_ ("search songs"), 0.0f, KeyAction::search },
    { 'C',         ctrl, "Ctrl+C", nullptr, N_ ("coloured waveform on or off"), 0.0f, KeyAction::spectralWaveform },
    { 'Z',         ctrl, "Ctrl+Z", nullptr, N_ ("undo cue or grid edit"), 0.0f, KeyAction::undo },
    { 'Z',    ctrlShift, "Ctrl+Shift+Z", nullptr, N_ ("redo"), 0.0f, KeyAction::redo },
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

juce::String keyOfCommand (int command)
{
    for (const auto& binding : keyBindings())
        if (binding.constant != nullptr && CommandTable::numberOf (binding.constant) == command)
            return tr (binding.keyName);
    return {};
}

std::span<const KeyBinding> keyBindings()
{
    static const auto bindings = builtBindings();
    return bindings;
}

juce::String keyNameOf (KeyAction action, int deck)
{
    for (const auto& binding : table)
        if (binding.action == action && binding.actionDeck == deck)
            return binding.keyName;
    return {};
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

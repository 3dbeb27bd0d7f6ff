#include "ui/KeyboardCommands.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"

namespace
{
using Key = juce::KeyPress;

// clang-format off
const KeyBinding bindings[] {
    { Key::spaceKey,  "Space",  "PLAY_PAUSE_A" },
    { 'Q',            "Q",      "CUE_STUTTER_A" },
    { 'W',            "W",      "SYNC_LOCK_A" },
    { 'E',            "E",      "PITCH_BEND_NUDGE_MINUS_A" },
    { 'R',            "R",      "PITCH_BEND_NUDGE_PLUS_A" },
    { '1',            "1",      "HOT_CUE_1_A" },
    { '2',            "2",      "HOT_CUE_2_A" },
    { '3',            "3",      "HOT_CUE_3_A" },
    { '4',            "4",      "HOT_CUE_4_A" },
    { Key::returnKey, "Return", "PLAY_PAUSE_B" },
    { 'U',            "U",      "CUE_STUTTER_B" },
    { 'I',            "I",      "SYNC_LOCK_B" },
    { 'O',            "O",      "PITCH_BEND_NUDGE_MINUS_B" },
    { 'P',            "P",      "PITCH_BEND_NUDGE_PLUS_B" },
    { '7',            "7",      "HOT_CUE_1_B" },
    { '8',            "8",      "HOT_CUE_2_B" },
    { '9',            "9",      "HOT_CUE_3_B" },
    { '0',            "0",      "HOT_CUE_4_B" },
    { Key::F5Key,     "F5",     "PLAY_PAUSE_C" },
    { Key::F6Key,     "F6",     "CUE_STUTTER_C" },
    { Key::F7Key,     "F7",     "PITCH_BEND_NUDGE_MINUS_C" },
    { Key::F8Key,     "F8",     "PITCH_BEND_NUDGE_PLUS_C" },
    { Key::F9Key,     "F9",     "PLAY_PAUSE_D" },
    { Key::F10Key,    "F10",    "CUE_STUTTER_D" },
    { Key::F11Key,    "F11",    "PITCH_BEND_NUDGE_MINUS_D" },
    { Key::F12Key,    "F12",    "PITCH_BEND_NUDGE_PLUS_D" },
};
// clang-format on
}

std::span<const KeyBinding> keyBindings()
{
    return bindings;
}

KeyboardCommands::KeyboardCommands (CPlatterdex& e, std::function<bool (int)> keyDown)
    : engine (e),
      isKeyDown (std::move (keyDown))
{
    static_assert (std::size (bindings) <= maxBindings);
    for (size_t i = 0; i < std::size (bindings); ++i)
        commands[i] = CommandTable::numberOf (bindings[i].constant);
}

bool KeyboardCommands::keyPressed (const juce::KeyPress& key)
{
    if (key.getModifiers().isAnyModifierKeyDown())
        return false;
    const auto code =
        juce::CharacterFunctions::toUpperCase (static_cast<juce::juce_wchar> (key.getKeyCode()));
    for (size_t i = 0; i < std::size (bindings); ++i)
    {
        if (bindings[i].keyCode != key.getKeyCode() && bindings[i].keyCode != static_cast<int> (code))
            continue;
        if (!down[i])
        {
            down[i] = true;
            engine.setParameter (commands[i], 1.0f);
        }
        return true;
    }
    return false;
}

void KeyboardCommands::keyStateChanged()
{
    for (size_t i = 0; i < std::size (bindings); ++i)
        if (down[i] && !isKeyDown (bindings[i].keyCode))
            keyReleased (i);
}

void KeyboardCommands::releaseAll()
{
    for (size_t i = 0; i < std::size (bindings); ++i)
        if (down[i])
            keyReleased (i);
}

void KeyboardCommands::keyReleased (size_t binding)
{
    down[binding] = false;
    if (CommandTable::find (commands[binding]).family->kind == CommandKind::state)
        engine.setParameter (commands[binding], 0.0f);
}

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <array>
#include <functional>
#include <span>

class CPlatterdex;

/** A key of the computer's keyboard and the command it carries out. */
struct KeyBinding
{
    int keyCode;
    const char* keyName;  ///< as the documentation says it
    const char* constant; ///< of the command
};

/** All keys that play, without modifiers. */
std::span<const KeyBinding> keyBindings();

/** Plays the engine from the computer's keyboard.

    A key acts once as it goes down, however long the system repeats it; keys of held commands act again as they come
    up. Message thread. */
class KeyboardCommands
{
public:
    /** @param isKeyDown   tells the state of a key by its code */
    explicit KeyboardCommands (
        CPlatterdex&, std::function<bool (int keyCode)> isKeyDown = [] (int code)
                      { return juce::KeyPress::isKeyCurrentlyDown (code); });
    ~KeyboardCommands() { releaseAll(); }

    /** @returns whether the key belongs to a command */
    bool keyPressed (const juce::KeyPress&);

    /** Takes notice of keys that have come up. */
    void keyStateChanged();

    /** As if all keys came up: the keyboard has gone elsewhere. */
    void releaseAll();

private:
    static constexpr size_t maxBindings = 64;

    void keyReleased (size_t binding);

    CPlatterdex& engine;
    const std::function<bool (int)> isKeyDown;
    std::array<int, maxBindings> commands {};
    std::array<bool, maxBindings> down {};
};

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <array>
#include <functional>
#include <span>

class CPlatterdex;

/** A request of a key to the editor, in place of a command. */
enum class KeyAction
{
    none,
    load, ///< the dialog that chooses a track for a deck
    spectralWaveform,
    songs,  ///< the keyboard goes to the browser's songs
    search, ///< or to its search field
    undo,   ///< the last edit of cues or grid on the deck that was touched last
    redo,
    loadFree, ///< the song that is selected in the browser, onto a deck that is free
    help      ///< the manual, at the page of what is under the mouse
};

/** A key of the computer's keyboard and what it does. */
struct KeyBinding
{
    int keyCode;
    int modifiers;        ///< of juce::ModifierKeys, or 0
    const char* keyName;  ///< as the documentation says it
    const char* constant; ///< of the command; null for an action
    const char* text;     ///< what it does
    float step = 0.0f;    ///< added to the command's value by each press and repeat; 0 presses the command
    KeyAction action = KeyAction::none;
    int actionDeck = -1;

    /** The deck that the key plays, 0 to 3; -1 for none. */
    int deck() const;
};

/** All keys that play and whose function exists. */
std::span<const KeyBinding> keyBindings();

/** The name of the key of an action, empty without one. @param deck   0 to 3, or -1 for what concerns none */
juce::String keyNameOf (KeyAction, int deck = -1);

/** The key of a command as the documentation says it, in the language in use; empty for a command without one.
    @param command   1 to 465 */
juce::String keyOfCommand (int command);

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

    /** Carries out what is no command. @param deck   0 to 3, or -1 */
    std::function<void (KeyAction, int deck)> onAction;

    /** Told of each press of a key that plays a deck. @param deck   0 to 3 */
    std::function<void (int deck)> onDeck;

    /** @returns whether the key belongs to a binding */
    bool keyPressed (const juce::KeyPress&);

    /** Takes notice of keys that have come up. @returns whether one of a binding has */
    bool keyStateChanged();

    /** As if all keys came up: the keyboard has gone elsewhere. */
    void releaseAll();

private:
    static constexpr size_t maxBindings = 72;

    void press (size_t binding);
    void keyReleased (size_t binding);

    CPlatterdex& engine;
    const std::function<bool (int)> isKeyDown;
    std::array<int, maxBindings> commands {};
    std::array<bool, maxBindings> down {};
};

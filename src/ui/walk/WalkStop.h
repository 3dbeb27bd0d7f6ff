#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** Marks a control that is neither a button nor a command's widget as one that keys can walk to. */
struct WalkStop
{
    virtual ~WalkStop() = default;
};

/** A key that presses a control: Space or Return goes down once, however long it is held, and comes up again. */
class KeyFinger
{
public:
    static bool isPress (const juce::KeyPress& key) noexcept
    {
        return key == juce::KeyPress (juce::KeyPress::spaceKey)
               || key == juce::KeyPress (juce::KeyPress::returnKey);
    }

    /** The key that opens a control's menu. */
    static bool isMenu (const juce::KeyPress& key) noexcept
    {
        return key == juce::KeyPress (juce::KeyPress::F10Key, juce::ModifierKeys::shiftModifier, 0);
    }

    /** @returns true for the first of a key's repeats */
    bool goesDown (const juce::KeyPress& key) noexcept { return std::exchange (code, key.getKeyCode()) == 0; }

    /** @returns true once, when the key that went down is no longer down */
    bool comesUp() noexcept
    {
        return code != 0 && !juce::KeyPress::isKeyCurrentlyDown (code) && std::exchange (code, 0) != 0;
    }

private:
    int code = 0;
};

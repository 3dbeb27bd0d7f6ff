#pragma once

#include <juce_core/juce_core.h>

class CPlatterdex;

/** A widget's command: carried out, read, named and shown.

    One that is bound to nothing does nothing and reads 0. Message thread. */
class CommandBinding
{
public:
    CommandBinding() = default;

    /** @param number   of the command, 1 to 465; or a number that can only be read */
    CommandBinding (CPlatterdex&, int number) noexcept;

    bool isBound() const noexcept { return engine != nullptr; }
    int number() const noexcept { return commandNumber; }

    /** True if press and release both act. */
    bool isHeld() const noexcept;

    /** True for a value, false for what is pressed or stepped. */
    bool isValue() const noexcept;

    /** The command's reading as a widget shows it: writing it again changes nothing. */
    double value() const;

    /** True while the command reads above 0: lit. */
    bool isOn() const;

    void set (double value) const;

    /** A hand takes hold of the control, or lets go: what it does meanwhile is one gesture to the host. */
    void beginGesture() const;
    void endGesture() const;

    void press() const;

    /** Does something for a held command only. */
    void release() const;

    /** One step up or down of a stepped command. @param direction   above 0 for up */
    void step (int direction) const;

    /** The value that a double click gives. */
    double restValue() const;

    /** "Gain A". */
    juce::String name() const;

    /** The value in the words of its part, such as "1/8" or "Reverb"; two decimals where it has none. */
    juce::String text() const;

private:
    CPlatterdex* engine = nullptr;
    int commandNumber = 0;
};

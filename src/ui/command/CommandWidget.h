#pragma once

#include "ui/command/CommandBinding.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** A widget that can stand for one command: it carries it out, and follows it when it is polled. */
class CommandWidget
{
public:
    virtual ~CommandWidget() = default;

    /** Takes the command on. Its title for screen readers is the command's name, and so is its tooltip if it
        has none. */
    void bind (CPlatterdex&, int number);

    /** Looks at the engine, and repaints if there is something else to show. Does nothing while it is not bound. */
    virtual void poll() = 0;

    const CommandBinding& command() const noexcept { return binding; }
    int commandNumber() const noexcept { return binding.number(); }

    static constexpr int smallestHit = 22; ///< pixels: what a hand finds without looking

    /** The area a widget needs round its picture for a hand to find it. */
    static juce::Rectangle<int> hitArea (juce::Rectangle<int> picture) noexcept;

protected:
    /** The binding has changed. */
    virtual void bound() {}

private:
    CommandBinding binding;
};

/** Polls every CommandWidget among a component's children. */
void pollCommandWidgets (const juce::Component& parent);

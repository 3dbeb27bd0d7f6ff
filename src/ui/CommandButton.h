#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

class CPlatterdex;

/** A button that carries out a command as it goes down, because a hand on a beat can't wait for the release.

    A button of a held command (CommandKind::state) also sends the release: when it comes up, and whatever else takes it
    away from the hand. It is lit while its command reads above 0, as of the last poll(). */
class CommandButton : public juce::TextButton
{
public:
    /** @param number   of the command
        @param text     short, shown as it is */
    CommandButton (CPlatterdex&, int number, const juce::String& text);
    ~CommandButton() override;

    /** Takes the command's state as the button's light. */
    void poll();

    /** The hue it is filled with while lit. */
    void setLitColour (juce::Colour);

    /** The command that the right mouse button carries out in place of this one's. */
    void setAlternative (int number) { alternative = number; }

    int commandNumber() const noexcept { return number; }

    void mouseDown (const juce::MouseEvent&) override;
    void mouseDrag (const juce::MouseEvent&) override;
    void mouseUp (const juce::MouseEvent&) override;

private:
    void buttonStateChanged() override;
    void setHeld (bool);

    CPlatterdex& engine;
    const int number;
    const bool isHeldCommand;
    int alternative = 0;
    bool held = false;
};

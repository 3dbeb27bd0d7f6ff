#pragma once

#include "skin/SkinTable.h"
#include "ui/command/CommandPress.h"
#include "ui/command/CommandWidget.h"
#include "ui/look/SkinPicture.h"
#include "ui/walk/WalkStop.h"

#include <functional>

/** A text on a picture of any width. Lit, it is filled and its text turns dark.

    With a command it acts as it goes down, as PXImageButton does. The text and the tooltip are translated. */
class PXTextButton : public juce::TextButton, public CommandWidget
{
public:
    explicit PXTextButton (const juce::String& text = {});
    ~PXTextButton() override;

    /** The colour it is filled with while lit; quiet if nothing is said. */
    void setHue (skin::Hue);

    /** The same in a deck's hue. @param deck   0 to 3 */
    void setDeckHue (int deck);

    /** Six frames of its own in place of the skin's: off, over, down, and the same lit. */
    void setPicture (const SkinPicture&);

    /** The command that the right mouse button carries out. */
    void setAlternative (CPlatterdex&, int number);

    /** Lights the button while its command is off, where off is what should be noticed. */
    void setLitWhenOff() { litWhenOff = true; }

    std::function<void()> onRightClick;

    void poll() override;

    /** The one of the six frames that is shown. */
    int shownFrame() const;

    void paintButton (juce::Graphics&, bool over, bool down) override;
    void mouseDown (const juce::MouseEvent&) override;
    void mouseDrag (const juce::MouseEvent&) override;
    void mouseUp (const juce::MouseEvent&) override;
    bool keyPressed (const juce::KeyPress&) override;
    bool keyStateChanged (bool) override;
    void focusLost (FocusChangeType) override;
    void resized() override;

    /** The place of the text. */
    virtual juce::Rectangle<int> textArea() const;

protected:
    void bound() override;
    void clicked() override;
    void enablementChanged() override;

private:
    void choosePicture();
    void pressRight();

    SkinPicture picture;
    bool hasOwnPicture = false;
    skin::Hue hue = skin::Hue::neutral;
    bool litWhenOff = false;
    CommandPress press;
    KeyFinger finger;
    CommandBinding alternative;
};

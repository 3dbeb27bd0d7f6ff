#pragma once

#include "ui/widgets/CommandPress.h"
#include "ui/widgets/CommandWidget.h"
#include "ui/widgets/SkinPicture.h"

/** A text on a picture of any width. Lit, it is filled and its text turns dark.

    With a command it acts as it goes down, as PXImageButton does. The text and the tooltip are translated. */
class PXTextButton : public juce::TextButton, public CommandWidget
{
public:
    explicit PXTextButton (const juce::String& text = {});
    ~PXTextButton() override;

    /** A strip of six frames: off, over, down, and the same lit. The default is the skin's plain one of the button's
        height. */
    void setPicture (const SkinPicture&);

    /** The hue it is filled with while lit, such as its deck's. */
    void setLitColour (juce::Colour);

    /** The command that the right mouse button carries out. */
    void setAlternative (CPlatterdex&, int number);

    std::function<void()> onRightClick;

    void poll() override;

    /** Which of the six frames is shown. */
    int shownFrame() const;

    void paintButton (juce::Graphics&, bool over, bool down) override;
    void mouseDown (const juce::MouseEvent&) override;
    void mouseDrag (const juce::MouseEvent&) override;
    void mouseUp (const juce::MouseEvent&) override;

protected:
    void bound() override;
    void buttonStateChanged() override;

    /** Where the text goes. */
    virtual juce::Rectangle<int> textArea() const;

private:
    SkinPicture picture;
    juce::Colour litColour;
    CommandPress press;
    CommandBinding alternative;
};

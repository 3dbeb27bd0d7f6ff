#pragma once

#include "ui/command/CommandPress.h"
#include "ui/command/CommandWidget.h"
#include "ui/look/SkinPicture.h"
#include "ui/walk/WalkStop.h"

#include <array>
#include <functional>

class PXImageButton;

/** Hears of a PXImageButton's clicks. */
class PXImageButtonListener
{
public:
    virtual ~PXImageButtonListener() = default;
    virtual void clicked (PXImageButton&) = 0;
    virtual void rightClicked (PXImageButton&) {}
};

/** A button of six pictures: as it is, under the mouse and pressed, off and on.

    A click is a press that ends inside. With a command the press itself counts, since a hand on a beat can't wait for
    the release. Clear pixels of the picture are not part of the button, unless the picture is smaller than a hand
    needs: then all of smallestHit is. */
class PXImageButton : public juce::Component, public juce::SettableTooltipClient, public CommandWidget
{
public:
    /** @param name   with its underscore, "_playButton" */
    explicit PXImageButton (const juce::String& name = {});
    ~PXImageButton() override;

    void setImages (const SkinPicture& normalOff, const SkinPicture& overOff, const SkinPicture& downOff,
                    const SkinPicture& normalOn, const SkinPicture& overOn, const SkinPicture& downOn);

    /** The six from one strip's frames, in the order of setImages(). A strip of three looks the same on and off. */
    void setStrip (const SkinPicture&);

    void setToggleState (bool);
    bool getToggleState() const noexcept { return isOn; }

    void addListener (PXImageButtonListener* l) { listeners.add (l); }
    void removeListener (PXImageButtonListener* l) { listeners.remove (l); }

    std::function<void()> onClick, onRightClick;
    std::function<void (bool down)> onPress; ///< each press and release of the left button

    /** The command that the right mouse button carries out. */
    void setAlternative (CPlatterdex&, int number);

    void poll() override;

    bool isOn = false, isOver = false;
    bool isDown() const noexcept { return press.isDown(); }

    /** The one of the six pictures that is shown, in the order of setImages(). */
    int shownPicture() const;

    /** The picture's place: in the middle. */
    juce::Rectangle<int> pictureBounds() const;

    void paint (juce::Graphics&) override;
    bool hitTest (int x, int y) override;
    void mouseEnter (const juce::MouseEvent&) override;
    void mouseExit (const juce::MouseEvent&) override;
    void mouseDown (const juce::MouseEvent&) override;
    void mouseDrag (const juce::MouseEvent&) override;
    void mouseUp (const juce::MouseEvent&) override;
    bool keyPressed (const juce::KeyPress&) override;
    bool keyStateChanged (bool) override;
    void focusLost (FocusChangeType) override;
    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

protected:
    void bound() override;
    void enablementChanged() override;
    void visibilityChanged() override;

private:
    void pressRight();
    void release (bool isInside);
    void setDown (bool);
    void setOver (bool);

    struct Shown
    {
        SkinPicture picture;
        int frame = 0;
    };

    std::array<Shown, 6> pictures;
    juce::ListenerList<PXImageButtonListener> listeners;
    CommandPress press;
    KeyFinger finger;
    CommandBinding alternative;
    int painted = -1;
};

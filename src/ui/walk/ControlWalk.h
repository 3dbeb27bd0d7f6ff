#pragma once

#include "ui/walk/WalkStop.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <vector>

/** Takes the keyboard from control to control, and shows which one has it.

    The desk's controls want no keyboard, since its keys play the decks wherever the mouse has clicked. So a control wants it
    only while the walk has come to it: nothing but the walk can give it one. Message thread. */
class ControlWalk : private juce::FocusChangeListener,
                    private juce::ComponentListener,
                    private juce::KeyListener
{
public:
    /** @param root   its controls are walked; outlives the walk */
    explicit ControlWalk (juce::Component& root);
    ~ControlWalk() override;

    /** Told of each control that the walk comes to, and of null as it ends. */
    std::function<void (juce::Component*)> onStop;

    /** The controls that can be walked to now, from top to bottom and from left to right within each part; what has an explicit
        focus order comes before. Parts that go round in themselves, as the browser does, are left out. */
    std::vector<juce::Component*> stops() const;

    /** Goes on to the next control, or to the one before; from the last on to the first. The first time it goes to the first or
        the last. @param direction   1 or -1 @returns false if there is no control */
    bool go (int direction);

    /** Presses a box to tick or opens a list by Space or Return, once however long the key is held: these take none or one of the
        two by themselves. @returns false for other controls and keys */
    bool press (const juce::KeyPress&);

    /** Ends the walk. The keyboard is where it was; whoever ends it says where it goes. */
    void leave();

    /** The control that the walk has come to, or null. */
    juce::Component* current() const noexcept { return stop; }

private:
    /** The frame around the control, over everything else. */
    struct Ring : juce::Component
    {
        Ring();
        void paint (juce::Graphics&) override;
    };

    void placeRing();
    bool keyPressed (const juce::KeyPress& key, juce::Component*) override { return press (key); }
    bool keyStateChanged (bool isKeyDown, juce::Component*) override;
    void globalFocusChanged (juce::Component*) override;
    void componentMovedOrResized (juce::Component&, bool, bool) override { placeRing(); }
    void componentVisibilityChanged (juce::Component&) override { leave(); }
    void componentBeingDeleted (juce::Component&) override { leave(); }

    juce::Component& root;
    Ring ring;
    juce::Component::SafePointer<juce::Component> stop, last;
    KeyFinger finger;
    bool wantedKeyboard = false; ///< the control itself, before the walk came to it
};

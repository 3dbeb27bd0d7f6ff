#pragma once

#include "engine/CPlatterdex.h"
#include "ui/walk/WalkStop.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** A pad: pressed by the left button, its menu opened by the right one. Files, songs, loops and other pads are dropped
    on it. */
class SamplerPad : public juce::Component,
                   public juce::SettableTooltipClient,
                   public juce::DragAndDropTarget,
                   public juce::FileDragAndDropTarget,
                   public WalkStop
{
public:
    /** @param pad   0 to 15 */
    SamplerPad (CPlatterdex&, int pad);

    /** Looks at the engine anew. Message thread, as all. */
    void poll();

    /** The pad's words as they are painted. */
    struct Face
    {
        juce::String name, length, mode;
        juce::String fault; ///< of the last load, or of what it should have left; shown as the tooltip
        bool isPlaying = false, isFilled = false, isFaulty = false;
        int progress = 0; ///< pixels of the line at the bottom

        bool operator== (const Face&) const = default;
    };

    const Face& face() const noexcept { return shown; }

    /** The length of a sample as a pad tells it: "4 beats", "1 beat", "1/8 beats"; empty without a tempo. */
    static juce::String lengthText (double musicalBeats);

    void paint (juce::Graphics&) override;
    void mouseDown (const juce::MouseEvent&) override;
    void mouseDrag (const juce::MouseEvent&) override;
    void mouseUp (const juce::MouseEvent&) override;
    bool keyPressed (const juce::KeyPress&) override;
    bool keyStateChanged (bool) override;
    void focusLost (FocusChangeType) override;
    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

    bool isInterestedInDragSource (const SourceDetails&) override;
    void itemDragEnter (const SourceDetails&) override { setDropTarget (true); }
    void itemDragExit (const SourceDetails&) override { setDropTarget (false); }
    void itemDropped (const SourceDetails&) override;

    bool isInterestedInFileDrag (const juce::StringArray&) override;
    void fileDragEnter (const juce::StringArray&, int, int) override { setDropTarget (true); }
    void fileDragExit (const juce::StringArray&) override { setDropTarget (false); }
    void filesDropped (const juce::StringArray&, int, int) override;

private:
    Face faceNow() const;
    int command() const noexcept { return firstCommand + pad; }
    void setDropTarget (bool);
    void press();
    void release();

    static constexpr int firstCommand = 361;

    CPlatterdex& engine;
    const int pad;
    SamplerSlot& slot;
    Face shown;
    bool isPressed = false, isDropTarget = false;
    KeyFinger finger;
};

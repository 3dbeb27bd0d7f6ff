#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

/** The tooltip: shown after the mouse has rested, it follows it until the mouse finds something else or a button is
    pressed.

    It is a child of the editor's, never a window, so it stands in a host's window as well. It never lies over an area that the
    editor keeps free, and is not there while a menu or a dialog is open. Texts are translated. */
class PXTooltipComponent : public juce::Component, private juce::Timer
{
public:
    /** @param isWanted   the preference "Show Tooltips", asked each time */
    PXTooltipComponent (juce::Component& parent, std::function<bool()> isWanted);
    ~PXTooltipComponent() override;

    /** Areas of the parent that no tooltip covers, as waveforms that run. */
    std::function<juce::Array<juce::Rectangle<int>>()> keptFree;

    /** The words after the tooltip of a command, as its key. @param command   1 to 465 */
    std::function<juce::String (int command)> wordsOf;

    /** The place of a tooltip: the wanted one, or else the nearest above, below or beside an area that it would cover.
        @returns an empty rectangle where there is none */
    static juce::Rectangle<int> placeBeside (juce::Rectangle<int> wanted,
                                             const juce::Array<juce::Rectangle<int>>& keptFree,
                                             juce::Rectangle<int> room);

    static constexpr int delayMs = 700; ///< as JUCE's own

    /** Follows the mouse; its events and the timer that waits for it to rest call this.
        @param under      what the mouse is over, or null
        @param position   of the mouse in the parent
        @param pressed    whether a button is down
        @param now        in ms, of any clock that runs on */
    void follow (juce::Component* under, juce::Point<int> position, bool pressed, juce::uint32 now);

    /** Shows the tooltip of a control that the keyboard was taken to, at once and below it. @param control   null puts it away */
    void showOf (const juce::Component* control);

    const juce::String& text() const noexcept { return shown; }

    void paint (juce::Graphics&) override;

private:
    static constexpr int quickMove = 12; ///< pixels between two events: the mouse does not rest

    void timerCallback() override;
    void mouseEnter (const juce::MouseEvent& event) override { followEvent (event, false); }
    void mouseMove (const juce::MouseEvent& event) override { followEvent (event, false); }
    void mouseExit (const juce::MouseEvent&) override;
    void mouseDown (const juce::MouseEvent& event) override { followEvent (event, true); }
    void mouseDrag (const juce::MouseEvent& event) override { followEvent (event, true); }
    void mouseUp (const juce::MouseEvent& event) override { followEvent (event, false); }
    void mouseWheelMove (const juce::MouseEvent& event, const juce::MouseWheelDetails&) override
    {
        followEvent (event, false);
    }
    void followEvent (const juce::MouseEvent&, bool pressed);
    void show (const juce::String&, juce::Point<int> position);
    void hide();
    juce::String tipUnder (const juce::Component*) const;

    juce::Component& parent;
    SafePointer<juce::Component> hovered;
    const std::function<bool()> isWanted;
    juce::String shown, resting; ///< on the screen; under the mouse, waiting
    juce::uint32 restingSince = 0;
    juce::Point<int> lastPosition;
    bool spent = false; ///< a press has put the tooltip away
};

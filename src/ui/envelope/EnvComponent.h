#pragma once

#include "ui/envelope/EnvEdit.h"
#include "ui/envelope/EnvGeometry.h"
#include "ui/envelope/EnvHistory.h"
#include "ui/envelope/EnvLane.h"
#include "ui/envelope/GraphEnvInfoComponent.h"
#include "ui/envelope/GraphEnvListener.h"
#include "ui/poll/PollingView.h"

#include <optional>

/** Curves over each other, one of which is edited by mouse and keyboard.

    It works on copies: an edit is built, put into the lane's bank as a whole, and kept for undo; a drag is one edit.
    Changes that others make in a bank show at the next poll, and end the history. */
class EnvComponent : public PollingView, public juce::SettableTooltipClient
{
public:
    EnvComponent();
    ~EnvComponent() override;

    /** The curves, the first of which is the one that is edited. */
    void setLanes (EnvLanes);

    /** Chooses the curve that is edited. It is shown whether it is visible or not. */
    void selectLane (int);
    int selectedLane() const noexcept { return selected; }

    /** The curve that is edited, as it stands. */
    const Envelope& envelope() const noexcept;

    /** Replaces curves as one edit: pastes, imports, flips. */
    void apply (std::vector<std::pair<int, Envelope>> next);
    void applyToSelected (Envelope next) { apply ({ { selected, std::move (next) } }); }

    /** Runs something that changes banks elsewhere, such as an import, and keeps it as one edit. */
    void recordAround (const std::function<void()>& change);

    void undo();
    void redo();
    bool canUndo() const noexcept { return history.canUndo(); }
    bool canRedo() const noexcept { return history.canRedo(); }

    EnvEdit::Rules rules;
    bool zoomEnabled = true; ///< else the wheel is the parent's

    void setView (EnvView);
    EnvView view() const noexcept { return shownView; }

    /** All that can be seen: four beats, or the curve's length if that is more. */
    juce::Range<double> fullTime() const noexcept;

    /** The time that sounds now; nothing while nothing runs. */
    std::function<std::optional<double>()> playTime;
    juce::Colour playColour;

    /** A time in the words of the instrument; two decimals without it. */
    std::function<juce::String (double)> timeWords;

    void addListener (GraphEnvListener& l) { listeners.push_back (&l); }
    void removeListener (GraphEnvListener& l) { std::erase (listeners, &l); }

    /** Opens the menu of a point, as the right button does. */
    void openPointMenu (int point);

    /** Fills that menu. */
    juce::PopupMenu pointMenu (int point) const;
    void pointMenuChosen (int point, int id);

    EnvGeometry geometry() const { return { getLocalBounds().toFloat(), shownView }; }
    int selectedPoint() const noexcept { return chosenPoint; }
    const juce::String& labelText() const noexcept { return info.text(); }

    void paint (juce::Graphics&) override;
    void resized() override { repaint(); }
    void mouseMove (const juce::MouseEvent&) override;
    void mouseExit (const juce::MouseEvent&) override;
    void mouseDown (const juce::MouseEvent&) override;
    void mouseDrag (const juce::MouseEvent&) override;
    void mouseUp (const juce::MouseEvent&) override;
    void mouseWheelMove (const juce::MouseEvent&, const juce::MouseWheelDetails&) override;
    bool keyPressed (const juce::KeyPress&) override;
    void focusGained (FocusChangeType) override { repaint(); }
    void focusLost (FocusChangeType) override { repaint(); }

    static constexpr int typeItem = 100; ///< the menu's id of a shape is this plus its number
    static constexpr int deleteItem = 1, copyItem = 2, pasteItem = 3;

private:
    struct Lane
    {
        EnvLane lane;
        Envelope shown;
        std::uint32_t revision = 0;
        bool isVisible = false;
    };

    enum class Hold
    {
        nothing,
        point,
        tension,
        view
    };

    struct Drag
    {
        Hold hold = Hold::nothing;
        int index = 0;
        juce::Point<float> from;
        Envelope before; ///< of the edit
        Envelope start;  ///< with a point that the press has put in
        EnvView view;
    };

    void pollMoving() override;
    Lane& lane() { return lanes[static_cast<size_t> (selected)]; }
    void show (int lane, Envelope next);
    bool takeOver (Lane&);
    void beginDrag (Hold, int index, juce::Point<float>, Envelope before);
    void dragPoint (const juce::MouseEvent&);
    void dragTension (const juce::MouseEvent&);
    void deletePoint (int);
    void edited();
    void showInfo (int point, juce::Point<float> beside);
    void playChanges (const EnvHistory::Edit&, bool before);
    void nudge (double time, double level);
    bool moveKey (const juce::KeyPress&);
    bool editKey (const juce::KeyPress&);
    void zoom (double factor, juce::Point<float> about, bool level);

    void paintGrid (juce::Graphics&, const EnvGeometry&) const;
    void paintCurve (juce::Graphics&, const EnvGeometry&, const Lane&, bool isSelected) const;
    void paintHandles (juce::Graphics&, const EnvGeometry&) const;
    juce::Rectangle<int> playArea (std::optional<double> time) const;

    std::vector<Lane> lanes;
    int selected = 0;
    int chosenPoint = 0;    ///< by the keyboard, or touched last
    EnvGeometry::Hit under; ///< the pointer
    std::uint8_t lastType = static_cast<std::uint8_t> (SegmentShape::smooth);
    std::optional<float> copiedLevel;
    EnvView shownView;
    Drag drag;
    EnvHistory history;
    GraphEnvInfoComponent info;
    std::optional<double> shownTime;
    std::vector<GraphEnvListener*> listeners;
};

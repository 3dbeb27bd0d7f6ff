#pragma once

#include "ui/poll/PollClock.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <vector>

/** A view that polls the engine while it can be seen.

    It polls while it and all its parents are visible, and rests with them, so a panel that is folded away costs nothing.
    Changes that a poll finds are repainted; the view owns no engine state. Message thread. */
class PollingView : public juce::Component, private juce::ComponentListener, private PollClock::Client
{
public:
    static constexpr int movingMs = PollClock::movingMs; ///< between two calls of pollMoving()
    static constexpr int calmMs =
        PollClock::movingMs * PollClock::calmTurns; ///< between two calls of pollCalm()

    enum class Pace
    {
        moving, ///< has parts that move with the sound
        calm    ///< pollMoving() is never called
    };

    explicit PollingView (Pace);
    ~PollingView() override;

    /** Looks at the engine anew and does both polls at once. */
    void refresh();

    bool isPolling() const noexcept { return polling; }

    /** Milliseconds between two polls; 0 while it rests. */
    int pollPeriod() const noexcept { return polling ? (pace == Pace::moving ? movingMs : calmMs) : 0; }

protected:
    /** Looks at what moves with the sound. */
    virtual void pollMoving() {}

    /** Looks at all else. */
    virtual void pollCalm() {}

    void visibilityChanged() override { followVisibility(); }
    void parentHierarchyChanged() override;

private:
    void poll (bool calmToo) override;
    const juce::ComponentPeer* window() const override { return getPeer(); }
    void componentVisibilityChanged (juce::Component&) override { followVisibility(); }
    void componentBeingDeleted (juce::Component&) override;
    void followVisibility();
    void leaveParents();

    const Pace pace;
    const juce::SharedResourcePointer<PollClock> clock;
    bool polling = false;
    std::vector<juce::Component*> watchedParents;
};

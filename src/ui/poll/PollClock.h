#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <vector>

class PollingView;

/** The one timer of all views that poll. They look in the same moment, so what they find changed is painted in one go,
    and the window system is asked whether a window is minimised once for all of its views. Message thread; held by a
    juce::SharedResourcePointer. */
class PollClock : private juce::Timer
{
public:
    static constexpr int movingMs = 40; ///< between two ticks
    static constexpr int calmTurns = 5; ///< every such tick is a calm one

    /** A view may come and go at any time, within a poll as well. It polls from the next tick on. */
    void add (PollingView&);
    void remove (PollingView&);

private:
    struct Window
    {
        const juce::ComponentPeer* peer;
        bool isMinimised;
    };

    void timerCallback() override;
    bool isMinimised (const PollingView&);

    std::vector<PollingView*> views; ///< nullptr for one that left during a tick
    std::vector<Window> windows;     ///< as they were at the last calm tick
    int turn = 0;
};

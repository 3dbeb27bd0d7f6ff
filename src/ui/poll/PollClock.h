#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <vector>

/** The one timer of all views that poll. They look in the same moment, so what they find changed is painted in one go,
    and the window system is asked whether a window is minimised once for all of its views. Message thread; held by a
    juce::SharedResourcePointer. */
class PollClock : private juce::Timer
{
public:
    static constexpr int movingMs = 40; ///< between two ticks
    static constexpr int calmTurns = 5; ///< every such tick is a calm one

    /** Takes down what views show, once for all of them, before they are asked. */
    class Source
    {
    public:
        virtual ~Source() = default;

        /** @returns true if it has found something else than before */
        virtual bool look() = 0;
    };

    /** A view that is asked at each tick. */
    class Client
    {
    public:
        virtual ~Client() = default;

        /** @param calm   the tick is one of those for what changes seldom */
        virtual void poll (bool calm) = 0;

        /** The window that the view stands in, or null. */
        virtual const juce::ComponentPeer* window() const = 0;
    };

    /** Sources and clients may come and go at any time, within a poll as well. A client polls from the next tick on. */
    void add (Client&);
    void remove (Client&);
    void add (Source&);
    void remove (Source&);

    /** Lets every source look now. @returns true if one has found something else than before */
    bool look();

    /** Looks and asks everybody now. @param calm   asks for what changes seldom, too */
    void tick (bool calm);

    /** A hand has done something: the next ticks come at once and 20 ms later, and both are calm ones. */
    void hurry();

private:
    struct Window
    {
        const juce::ComponentPeer* peer;
        bool isMinimised;
    };

    void timerCallback() override;
    void ask (bool calm);
    bool isMinimised (const Client&);

    std::vector<Client*> clients; ///< nullptr for one that left during a tick
    std::vector<Source*> sources;
    std::vector<Window> windows; ///< as they were at the last calm tick
    int turn = 0;
    int hurriedTicks = 0; ///< still to come
};

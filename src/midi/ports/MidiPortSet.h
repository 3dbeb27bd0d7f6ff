#pragma once

#include "midi/ports/MidiPortService.h"

#include <atomic>

/** The ports that one user of MIDI wants to have open: the engine, or a script. A port that comes, or comes back, is opened
    by itself; one that goes stays wanted. Any thread, except that none of its own receiver's calls may end it. */
class MidiPortSet : private MidiPortListener
{
public:
    /** A port as a list shows it. */
    struct Row
    {
        juce::String name;
        int place = 0;  ///< among those of its name
        int index = -1; ///< in the service's list, -1 while it is absent
        bool isWanted = false, isOpen = false;

        /** The name, with a number from the second of one name on. */
        juce::String title() const { return place > 0 ? name + " (" + juce::String (place + 1) + ")" : name; }
        bool operator== (const Row&) const = default;
    };

    /** A port as it is remembered. */
    struct Wanted
    {
        juce::String name;
        int place = 0;
        bool operator== (const Wanted&) const = default;
    };

    MidiPortSet (MidiPortService&, MidiReceiver&);
    ~MidiPortSet() override;

    /** Wants a port open or closed; it happens soon, on the service's thread. A name that is absent is opened when it comes.
        @param index   in the service's list, to tell devices of one name apart; -1 for the first of the name. With -1 all
                       ports of the name are closed */
    void setInputEnabled (const juce::String& name, bool enable, int index = -1);
    void setOutputEnabled (const juce::String& name, bool enable, int index = -1);

    /** Wants one port open or closed, also one that is absent: others of its name stay as they are. */
    void setEnabled (MidiDirection, const Wanted&, bool enable);

    /** True if a port of that name is open. @param index   of the service's list; -1 for any */
    bool isInputEnabled (const juce::String& name, int index = -1) const;
    bool isOutputEnabled (const juce::String& name, int index = -1) const;

    /** All ports that are there, then those that are wanted and absent. */
    std::vector<Row> rows (MidiDirection) const;

    /** The wanted ports in the order in which they are remembered: those that are open, then those that aren't. */
    std::vector<Wanted> wanted (MidiDirection) const;

    /** Takes the place of what is wanted so far. */
    void setWanted (MidiDirection, std::vector<Wanted>);

    /** Sends a message to every open output, in the order of their opening. A port that loses it owes a repaint. */
    void send (std::span<const uint8_t> message);

    /** Brings the outputs that have just come, or have lost something, up to date, each by one call of `paint`, which sends
        all there is to say and returns false if that was lost again. */
    void repaintOwing (const std::function<bool (OpenMidiOutput&)>& paint);

    /** True while an output is owed a repaint. Waits for nothing. */
    bool owesRepaint() const noexcept { return isOwing.load (std::memory_order_relaxed); }

    /** Rises whenever outputs were opened: a device that has just come may have to be woken up. Waits for nothing. */
    uint32_t outputsOpened() const noexcept { return openings.load (std::memory_order_relaxed); }

    /** Closes all ports until the end; what is wanted stays. */
    void close();

    /** Called on the service's thread after a port was opened or closed. Set before the first port is wanted. */
    std::function<void()> onChange;

private:
    struct Input
    {
        MidiPortInfo port;
        std::unique_ptr<OpenMidiInput> open;
    };

    struct Output
    {
        MidiPortInfo port;
        std::unique_ptr<OpenMidiOutput> open;
        bool owesRepaint = true;
    };

    void portsChanged() override;
    void setEnabled (MidiDirection, const juce::String& name, bool enable, int index);
    bool isEnabled (MidiDirection, const juce::String& name, int index) const;

    std::vector<Wanted>& wantedOf (MidiDirection direction)
    {
        return direction == MidiDirection::input ? wantedInputs : wantedOutputs;
    }
    const std::vector<Wanted>& wantedOf (MidiDirection direction) const
    {
        return direction == MidiDirection::input ? wantedInputs : wantedOutputs;
    }

    bool isOpen (MidiDirection, const Wanted&) const;
    template <typename Port>
    bool closeUnwanted (std::vector<Port>&, MidiDirection, const std::vector<MidiPortInfo>& there);
    template <typename Port, typename Open>
    bool openWanted (std::vector<Port>&, MidiDirection, const std::vector<MidiPortInfo>& there, Open&&);

    MidiPortService& service;
    MidiReceiver& receiver;
    mutable std::mutex lock; ///< of all below
    std::vector<Wanted> wantedInputs, wantedOutputs;
    std::vector<Input> inputs;
    std::vector<Output> outputs;
    std::atomic<bool> isOwing { false };
    std::atomic<uint32_t> openings { 0 };
    bool isClosed = false;
};

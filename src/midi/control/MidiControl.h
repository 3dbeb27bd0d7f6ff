#pragma once

#include "midi/control/ControllerDrivers.h"
#include "midi/control/InMidiThread.h"
#include "midi/control/MappedLamps.h"
#include "midi/control/MidiMessageQueue.h"
#include "midi/control/MidiSender.h"
#include "midi/control/OutMidiThread.h"
#include "midi/mapping/MappingAction.h"

/** The way of a message from a device to the engine, and of lamps back to it.

    Every message of three bytes goes through one queue to one thread, which offers it to learn, to the mapping table and to
    the driver of the selected controller, in this order. A second thread has lamps stated every 50 ms. */
class MidiControl : public MidiReceiver
{
public:
    static constexpr int tickMs = 50;

    /** The last message that was seen. */
    struct Seen
    {
        uint32_t count = 0; ///< of messages so far
        int status = 0, data = 0, value = 0;
    };

    /** @param drivers    of controllers; may be null
        @param realTime   asks for real time for InMidiThread; may be empty */
    MidiControl (CPlatterdex&, MidiPortService&, std::unique_ptr<ControllerDrivers> drivers = {},
                 const RealTimeRequest& realTime = {});
    ~MidiControl() override;

    /** Starts the two threads. Without them handle() and tick() are called by whoever drives this. */
    void start();

    /** Closes the ports and ends the threads, whatever these wait for. */
    void stop();

    /** Takes a message from a port; one of other than three bytes is dropped. Waits while the queue is full. */
    void midiArrived (const juce::String& port, std::span<const uint8_t> message) override;

    /** Carries one message out. InMidiThread. */
    void handle (int status, int data, int value);

    /** True if messages that wait together may be coalesced: nobody but the mapping table acts on them. InMidiThread. */
    bool mayCoalesce() const;

    /** States the lamps once. OutMidiThread. */
    void tick();

    /** Has the next message make itself the control of a row. Any thread. @param row   1 to 465; others do nothing */
    void learn (int row);
    void cancelLearn() { midiLearnArmed = 0; }

    /** Has a learning that is under way, or the next one, be for another row; others than 1 to 465 do nothing. */
    void selectLearnRow (int row)
    {
        if (MidiMapping::isCommand (row))
            midiLearnRow = row;
    }

    bool isLearning() const { return midiLearnArmed != 0; }

    /** The row that learns, or has learnt last. */
    int learnRow() const { return midiLearnRow; }

    /** The last message that was no system message. Any thread. */
    Seen lastSeen() const;

    /** Selects a model and runs its start-up step. Message thread. */
    void selectController (int model);

    /** True if the device list wants the ports open inside a host too. */
    Relaxed<bool> opensInHost { false };

    /** Reads the ports to open; a file that is missing or no device list leaves none.
        @returns false if there is a file and it can't be read */
    bool loadMidiDeviceList (const juce::File&);

    /** @returns false if the file can't be written */
    bool saveMidiDeviceList (const juce::File&) const;

    CPlatterdex& engine;
    MidiPortSet ports;
    MidiMapping mapping;
    MidiMappingDispatcher dispatcher { engine, mapping };
    MidiSender sender { ports };

private:
    int selectedModel() const { return engine.settings.controllerPreset; }
    void learnFrom (int status, int data);

    const std::unique_ptr<ControllerDrivers> drivers;
    Relaxed<int32_t> midiLearnRow { 0 };
    std::atomic<int32_t> midiLearnArmed { 0 };
    Relaxed<uint64_t> seen { 0 }; ///< the message's word, above it the count
    Relaxed<uint32_t> midiTickCount { 0 };
    uint32_t outputsWoken = 0; ///< of those opened; OutMidiThread's
    MappedLamps lamps;
    MidiMessageQueue midiInQueue;
    InMidiThread inMidiThread;
    OutMidiThread outMidiThread { *this };
};

#include "midi/control/MidiControl.h"

#include "midi/ports/PortElements.h"
#include "support/files/ReplaceFile.h"

#include <utility>

MidiControl::MidiControl (CPlatterdex& e, MidiPortService& service, std::unique_ptr<ControllerDrivers> d,
                          const RealTimeRequest& realTime)
    : engine (e),
      ports (service, *this),
      drivers (std::move (d)),
      inMidiThread (*this, midiInQueue, realTime)
{
}

MidiControl::~MidiControl()
{
    stop();
}

void MidiControl::start()
{
    inMidiThread.start();
    outMidiThread.start();
}

void MidiControl::stop()
{
    midiInQueue.close(); // a port that waits for room would hold up its own closing
    ports.close();
    inMidiThread.stop();
    outMidiThread.stop();
}

void MidiControl::midiArrived (const juce::String&, std::span<const uint8_t> message)
{
    if (message.size() == 3)
        midiInQueue.push (MidiWord::pack (message[0], message[1], message[2]));
}

void MidiControl::handle (int status, int data, int value)
{
    const auto word = MidiWord::withoutNoteOff (MidiWord::pack (status, data, value));
    status = MidiWord::status (word);
    value = MidiWord::value (word);
    if (status < 0x80 || status >= 0xf0)
        return;

    seen = ((seen >> 24u) + 1u) << 24u | word;
    if (midiLearnArmed != 0)
        learnFrom (status, data);
    dispatcher.dispatchMidiMapping (status, data, value);
    if (drivers != nullptr)
        drivers->handleControllerInput (*this, selectedModel(), status, data, value);
}

void MidiControl::learn (int row)
{
    if (!MidiMapping::isCommand (row))
        return;
    midiLearnRow = row;
    midiLearnArmed = 1;
}

void MidiControl::learnFrom (int status, int data)
{
    // Whoever calls the learning off meanwhile wins.
    if (midiLearnArmed.exchange (0) != 0)
        mapping.setRow (midiLearnRow, { status, data });
}

MidiControl::Seen MidiControl::lastSeen() const
{
    const uint64_t all = seen;
    const auto word = static_cast<uint32_t> (all & 0xffffffu);
    return { static_cast<uint32_t> (all >> 24u), MidiWord::status (word), MidiWord::data (word),
             MidiWord::value (word) };
}

void MidiControl::tick()
{
    if (drivers != nullptr)
    {
        // A device that comes, at the start of the program too, has heard nothing of the driver yet.
        if (const auto opened = ports.outputsOpened(); std::exchange (outputsWoken, opened) != opened)
            drivers->startController (*this, selectedModel());
        drivers->updateControllerOutput (*this, selectedModel(), midiTickCount);
    }
    lamps.state (engine, mapping, sender);
    sender.repaintOwing();
    midiTickCount += 1u;
}

bool MidiControl::mayCoalesce() const
{
    return drivers == nullptr || !drivers->hasInput (selectedModel());
}

void MidiControl::selectController (int model)
{
    engine.settings.controllerPreset = static_cast<int8_t> (juce::jlimit (0, 127, model));
    if (drivers == nullptr)
        return;
    sender.pauseMs = drivers->pauseMs (selectedModel());
    drivers->startController (*this, selectedModel());
}

bool MidiControl::loadMidiDeviceList (const juce::File& file)
{
    const auto isThere = file.existsAsFile();
    const auto lists = isThere ? parseMidiDeviceList (file.createInputStream()) : std::nullopt;
    lists.value_or (PortLists {}).applyTo (ports);
    opensInHost = lists && lists->opensInHost;
    return lists.has_value() || !isThere;
}

bool MidiControl::saveMidiDeviceList (const juce::File& file) const
{
    const auto text = deviceListText (ports, opensInHost);
    return replaceFile (file, text.toRawUTF8(), text.getNumBytesAsUTF8());
}

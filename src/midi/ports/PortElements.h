#pragma once

#include "midi/ports/MidiPortSet.h"
#include "support/xml/XmlPullParser.h"

/** The ports that a set-up file remembers. */
struct PortLists
{
    std::vector<MidiPortSet::Wanted> inputs, outputs;
    bool opensInHost = false; ///< of a device list, in an attribute of our own

    /** Takes the place of what a set wants so far. */
    void applyTo (MidiPortSet&) const;
};

/** Adds an element MIDIINPUT or MIDIOUTPUT for each port that a set wants: the inputs before the outputs, of each those that
    are open first. The second of two ports of one name has its place in an attribute of our own, "place". */
void writePortElements (juce::XmlElement& root, const MidiPortSet&);

/** Takes an element that has just begun, if it is one of these.
    @returns true if it was */
bool readPortElement (const XmlPullParser&, PortLists&);

/** Reads a device list file. Takes any bytes. @returns nothing if they are none as a whole */
std::optional<PortLists> parseMidiDeviceList (std::unique_ptr<juce::InputStream>);

/** The text of a device list file. */
juce::String deviceListText (const MidiPortSet&, bool opensInHost);

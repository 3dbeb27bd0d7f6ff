#pragma once

#include "midi/ports/MidiPort.h"

/** Tells the ports of one name apart, also after they were unplugged: a port keeps its place for as long as it is there, its
    place stays free when it goes, and the next port of that name takes the first free one. One direction, one thread. */
class PortPlaces
{
public:
    /** Fills in the places of the ports that are there now. */
    void assign (std::vector<MidiPortInfo>&);

private:
    struct Seat
    {
        juce::String name, handle;
        int place = 0;
        bool isTaken = false;
    };

    Seat& seatFor (const MidiPortInfo&);

    std::vector<Seat> seats;
};

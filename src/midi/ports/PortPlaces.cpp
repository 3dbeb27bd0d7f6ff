#include "midi/ports/PortPlaces.h"

#include <algorithm>

PortPlaces::Seat& PortPlaces::seatFor (const MidiPortInfo& port)
{
    int next = 0;
    Seat* firstFree = nullptr;
    for (auto& seat : seats)
    {
        if (seat.name != port.name)
            continue;
        next = std::max (next, seat.place + 1);
        if (!seat.isTaken && (firstFree == nullptr || seat.place < firstFree->place))
            firstFree = &seat;
    }
    return firstFree != nullptr ? *firstFree : seats.emplace_back (Seat { port.name, {}, next });
}

void PortPlaces::assign (std::vector<MidiPortInfo>& ports)
{
    for (auto& seat : seats)
        seat.isTaken = std::any_of (ports.begin(), ports.end(),
                                    [&seat] (const MidiPortInfo& port)
                                    { return port.name == seat.name && port.handle == seat.handle; });
    for (auto& port : ports)
    {
        const auto known = std::find_if (seats.begin(), seats.end(),
                                         [&port] (const Seat& seat)
                                         { return seat.name == port.name && seat.handle == port.handle; });
        auto& seat = known != seats.end() ? *known : seatFor (port);
        seat.handle = port.handle;
        seat.isTaken = true;
        port.place = seat.place;
    }
}

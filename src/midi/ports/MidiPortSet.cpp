#include "midi/ports/MidiPortSet.h"

#include <algorithm>
#include <utility>

namespace
{
bool isSame (const MidiPortInfo& port, const MidiPortSet::Wanted& wanted)
{
    return port.name == wanted.name && port.place == wanted.place;
}

template <typename Ports>
auto findWanted (Ports& ports, const MidiPortSet::Wanted& wanted)
{
    return std::find_if (ports.begin(), ports.end(),
                         [&wanted] (const auto& each) { return isSame (each.port, wanted); });
}
}

MidiPortSet::MidiPortSet (MidiPortService& s, MidiReceiver& r) : service (s), receiver (r)
{
    service.add (*this);
}

MidiPortSet::~MidiPortSet()
{
    service.remove (*this);
    close();
}

void MidiPortSet::close()
{
    std::vector<Input> formerInputs;
    std::vector<Output> formerOutputs;
    {
        const std::scoped_lock sl (lock);
        isClosed = true;
        formerInputs.swap (inputs);
        formerOutputs.swap (outputs);
    }
}

namespace
{
/** The name of the output that belongs to a port: some devices call it otherwise than their input. */
juce::String outputNameOf (const juce::String& name)
{
    return name.replace ("Vestax MIDI In", "Vestax MIDI Out").replace ("Casio MIDI In", "Casio MIDI Out");
}
}

void MidiPortSet::setInputEnabled (const juce::String& name, bool enable, int index)
{
    setEnabled (MidiDirection::input, name, enable, index);
}

void MidiPortSet::setOutputEnabled (const juce::String& name, bool enable, int index)
{
    setEnabled (MidiDirection::output, outputNameOf (name), enable, index);
}

bool MidiPortSet::isInputEnabled (const juce::String& name, int index) const
{
    return isEnabled (MidiDirection::input, name, index);
}

bool MidiPortSet::isOutputEnabled (const juce::String& name, int index) const
{
    return isEnabled (MidiDirection::output, outputNameOf (name), index);
}

void MidiPortSet::setEnabled (MidiDirection direction, const juce::String& name, bool enable, int index)
{
    const auto there = service.ports (direction);
    Wanted port { name, 0 };
    if (index >= 0 && index < static_cast<int> (there.size())
        && there[static_cast<size_t> (index)].name == name)
        port.place = there[static_cast<size_t> (index)].place;
    else if (const auto first = std::find_if (there.begin(), there.end(),
                                              [&name] (const auto& each) { return each.name == name; });
             first != there.end())
        port.place = first->place;
    if (enable || index >= 0)
        return setEnabled (direction, port, enable);
    {
        const std::scoped_lock sl (lock);
        std::erase_if (wantedOf (direction), [&name] (const Wanted& each) { return each.name == name; });
    }
    service.reconsider();
}

void MidiPortSet::setEnabled (MidiDirection direction, const Wanted& port, bool enable)
{
    {
        const std::scoped_lock sl (lock);
        auto& all = wantedOf (direction);
        if (!enable)
            std::erase (all, port);
        else if (std::find (all.begin(), all.end(), port) == all.end())
            all.push_back (port);
    }
    service.reconsider();
}

bool MidiPortSet::isEnabled (MidiDirection direction, const juce::String& name, int index) const
{
    const auto list = rows (direction);
    return std::any_of (list.begin(), list.end(),
                        [&] (const Row& row)
                        { return row.isOpen && row.name == name && (index < 0 || row.index == index); });
}

bool MidiPortSet::isOpen (MidiDirection direction, const Wanted& port) const
{
    return direction == MidiDirection::input ? findWanted (inputs, port) != inputs.end()
                                             : findWanted (outputs, port) != outputs.end();
}

std::vector<MidiPortSet::Row> MidiPortSet::rows (MidiDirection direction) const
{
    const auto there = service.ports (direction);
    const std::scoped_lock sl (lock);
    const auto& all = wantedOf (direction);
    std::vector<Row> list;
    for (const auto& port : there)
    {
        const Wanted key { port.name, port.place };
        list.push_back ({ port.name, port.place, static_cast<int> (list.size()),
                          std::find (all.begin(), all.end(), key) != all.end(), isOpen (direction, key) });
    }
    for (const auto& each : all)
        if (std::none_of (there.begin(), there.end(),
                          [&each] (const auto& port) { return isSame (port, each); }))
            list.push_back ({ each.name, each.place, -1, true, false });
    return list;
}

std::vector<MidiPortSet::Wanted> MidiPortSet::wanted (MidiDirection direction) const
{
    const std::scoped_lock sl (lock);
    auto list = wantedOf (direction);
    std::stable_partition (list.begin(), list.end(),
                           [&] (const Wanted& each) { return isOpen (direction, each); });
    return list;
}

void MidiPortSet::setWanted (MidiDirection direction, std::vector<Wanted> list)
{
    {
        const std::scoped_lock sl (lock);
        wantedOf (direction) = std::move (list);
    }
    service.reconsider();
}

void MidiPortSet::send (std::span<const uint8_t> message)
{
    const std::scoped_lock sl (lock);
    for (auto& output : outputs)
        if (!output.open->send (message))
        {
            output.owesRepaint = true;
            isOwing = true;
        }
}

void MidiPortSet::repaintOwing (const std::function<bool (OpenMidiOutput&)>& paint)
{
    const std::scoped_lock sl (lock);
    bool stillOwing = false;
    for (auto& output : outputs)
    {
        if (output.owesRepaint)
            output.owesRepaint = !paint (*output.open);
        stillOwing |= output.owesRepaint;
    }
    isOwing = stillOwing;
}

template <typename Port>
bool MidiPortSet::closeUnwanted (std::vector<Port>& ports, MidiDirection direction,
                                 const std::vector<MidiPortInfo>& there)
{
    std::vector<Port> closing; // destroyed without the lock: an input waits for its message's delivery
    {
        const std::scoped_lock sl (lock);
        const auto& all = wantedOf (direction);
        for (auto each = ports.begin(); each != ports.end();)
        {
            const auto isThere = std::find (there.begin(), there.end(), each->port) != there.end();
            const auto isWanted =
                std::find (all.begin(), all.end(), Wanted { each->port.name, each->port.place }) != all.end();
            if (isThere && isWanted)
            {
                ++each;
                continue;
            }
            closing.push_back (std::move (*each));
            each = ports.erase (each);
        }
    }
    return !closing.empty();
}

template <typename Port, typename Open>
bool MidiPortSet::openWanted (std::vector<Port>& ports, MidiDirection direction,
                              const std::vector<MidiPortInfo>& there, Open&& open)
{
    std::vector<MidiPortInfo> missing;
    {
        const std::scoped_lock sl (lock);
        for (const auto& each : wantedOf (direction))
            if (const auto port = std::find_if (there.begin(), there.end(),
                                                [&each] (const auto& p) { return isSame (p, each); });
                port != there.end() && !isOpen (direction, each))
                missing.push_back (*port);
    }
    bool hasOpened = false;
    for (const auto& port : missing)
        if (auto opened = open (port))
        {
            const std::scoped_lock sl (lock);
            if (isClosed)
                return hasOpened;
            ports.push_back ({ port, std::move (opened) });
            hasOpened = true;
        }
    return hasOpened;
}

void MidiPortSet::portsChanged()
{
    {
        const std::scoped_lock sl (lock);
        if (isClosed)
            return;
    }
    const auto inputsThere = service.ports (MidiDirection::input);
    const auto outputsThere = service.ports (MidiDirection::output);
    auto hasChanged = closeUnwanted (inputs, MidiDirection::input, inputsThere);
    hasChanged |= closeUnwanted (outputs, MidiDirection::output, outputsThere);
    hasChanged |=
        openWanted (inputs, MidiDirection::input, inputsThere,
                    [this] (const MidiPortInfo& port) { return service.openInput (port, receiver); });
    if (openWanted (outputs, MidiDirection::output, outputsThere,
                    [this] (const MidiPortInfo& port) { return service.openOutput (port); }))
    {
        ++openings;
        isOwing = true;
        hasChanged = true;
    }
    if (hasChanged && onChange != nullptr)
        onChange();
}

#include "midi/ports/PortElements.h"

#include <algorithm>

namespace
{
constexpr const char* inputElement = "MIDIINPUT";
constexpr const char* outputElement = "MIDIOUTPUT";
constexpr const char* hostAttribute = "inHost";

/** More devices of one name than that nobody has; a larger number in a file is a fault. */
constexpr int mostPlaces = 64;
}

void PortLists::applyTo (MidiPortSet& set) const
{
    set.setWanted (MidiDirection::input, inputs);
    set.setWanted (MidiDirection::output, outputs);
}

void writePortElements (juce::XmlElement& root, const MidiPortSet& set)
{
    for (const auto direction : { MidiDirection::input, MidiDirection::output })
        for (const auto& port : set.wanted (direction))
        {
            auto* element =
                root.createNewChildElement (direction == MidiDirection::input ? inputElement : outputElement);
            element->setAttribute ("name", port.name);
            if (port.place > 0)
                element->setAttribute ("place", port.place);
        }
}

bool readPortElement (const XmlPullParser& xml, PortLists& lists)
{
    const auto isInput = xml.name() == inputElement;
    const auto* name = xml.attribute ("name");
    if ((!isInput && xml.name() != outputElement) || name == nullptr)
        return false;
    auto& list = isInput ? lists.inputs : lists.outputs;
    MidiPortSet::Wanted port { juce::String (juce::CharPointer_UTF8 (name->c_str())), 0 };
    if (const auto* place = xml.attribute ("place"))
        port.place = std::clamp (juce::String (juce::CharPointer_UTF8 (place->c_str())).getIntValue(), 0,
                                 mostPlaces - 1);
    // Files of other programs name two devices of one name twice.
    while (std::find (list.begin(), list.end(), port) != list.end() && port.place < mostPlaces)
        ++port.place;
    if (port.name.isNotEmpty() && port.place < mostPlaces)
        list.push_back (port);
    return true;
}

std::optional<PortLists> parseMidiDeviceList (std::unique_ptr<juce::InputStream> source)
{
    using Event = XmlPullParser::Event;
    XmlPullParser xml (std::move (source));
    PortLists lists;
    for (;;)
    {
        const auto event = xml.next();
        if (event == Event::failed)
            return {};
        if (event == Event::finished)
            return lists;
        if (event != Event::start)
            continue;
        if (xml.depth() == 1)
        {
            if (xml.name() != "midiList")
                return {};
            const auto* inHost = xml.attribute (hostAttribute);
            lists.opensInHost = inHost != nullptr && *inHost == "1";
        }
        if (xml.depth() == 2)
            readPortElement (xml, lists);
    }
}

juce::String deviceListText (const MidiPortSet& set, bool opensInHost)
{
    juce::XmlElement root ("midiList");
    root.setAttribute ("version", 2000);
    root.setAttribute ("name", "");
    if (opensInHost)
        root.setAttribute (hostAttribute, 1);
    writePortElements (root, set);
    return root.toString();
}

#include "plugins/slot/SlotsFile.h"

#include "support/xml/XmlCharacters.h"
#include "support/xml/XmlPullParser.h"

#include <cmath>

namespace
{
constexpr std::array<const char*, 2> indexNames { "param1", "param2" };

juce::String textOf (const XmlPullParser& parser, const char* name)
{
    const auto* value = parser.attribute (name);
    return value != nullptr ? juce::String::fromUTF8 (value->data(), static_cast<int> (value->size()))
                            : juce::String();
}

bool flagOf (const XmlPullParser& parser, const char* name, bool byDefault)
{
    const auto text = textOf (parser, name);
    return text.isEmpty() ? byDefault : text == "1";
}

SavedSlot slotIn (const XmlPullParser& parser)
{
    SavedSlot slot;
    slot.plugin = textOf (parser, "plugin");
    slot.name = textOf (parser, "name");
    if (const auto program = textOf (parser, "program"); program.isNotEmpty())
        slot.state.program = juce::jmax (PluginState::noProgram, program.getIntValue());
    slot.isLeftOut = flagOf (parser, "leftOut", slot.isLeftOut);
    slot.isOn = flagOf (parser, "on", slot.isOn);
    slot.isInsert = flagOf (parser, "insert", slot.isInsert);
    if (const auto wetness = textOf (parser, "dryWet"); wetness.isNotEmpty())
        if (const auto value = wetness.getDoubleValue(); value >= 0.0 && value <= 1.0)
            slot.dryWet = value;
    for (size_t i = 0; i < indexNames.size(); ++i)
        if (const auto index = textOf (parser, indexNames[i]); index.isNotEmpty())
            slot.paramIndices[i] = juce::jmax (-1, index.getIntValue());
    return slot;
}

void append (std::string& text, const char* name, const juce::String& value)
{
    text += ' ';
    text += name;
    text += "=\"";
    text += XmlCharacters::escape (value.toStdString());
    text += '"';
}
}

SlotsFile::Read SlotsFile::read (std::string_view bytes)
{
    using Event = XmlPullParser::Event;
    XmlPullParser parser (std::make_unique<juce::MemoryInputStream> (bytes.data(), bytes.size(), false));
    SavedSlots slots;
    SavedSlot* open = nullptr;
    std::string state;
    auto hasRoot = false;
    auto event = parser.next();
    for (; event != Event::finished && event != Event::failed; event = parser.next())
    {
        if (event == Event::text && open != nullptr)
            state += parser.text();
        if (event == Event::end && open != nullptr && parser.depth() == 1)
        {
            juce::MemoryOutputStream decoded (open->state.bytes, false);
            if (!juce::Base64::convertFromBase64 (decoded, juce::String (state).removeCharacters (" \r\n\t")))
                decoded.reset();
            open = nullptr;
        }
        if (event != Event::start)
            continue;
        if (!hasRoot && parser.name() != "vstSlots")
            break;
        hasRoot = true;
        const auto deck = textOf (parser, "deck");
        const auto index = static_cast<int> (deck[0]) - 'A';
        if (parser.name() != "slot" || parser.depth() != 2 || deck.length() != 1 || index < 0
            || index >= static_cast<int> (slots.size()))
            continue;
        open = &slots[static_cast<size_t> (index)];
        *open = slotIn (parser);
        state.clear();
    }
    return { std::move (slots), !hasRoot || event == Event::failed };
}

std::string SlotsFile::write (const SavedSlots& slots)
{
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<vstSlots version=\"2000\">\n";
    for (size_t i = 0; i < slots.size(); ++i)
    {
        const auto& slot = slots[i];
        text += "  <slot";
        append (text, "deck", juce::String::charToString (static_cast<juce::juce_wchar> ('A' + i)));
        append (text, "plugin", slot.plugin);
        append (text, "name", slot.name);
        append (text, "leftOut", slot.isLeftOut ? "1" : "0");
        append (text, "on", slot.isOn ? "1" : "0");
        append (text, "insert", slot.isInsert ? "1" : "0");
        append (text, "dryWet", juce::String (slot.dryWet, 6));
        for (size_t which = 0; which < indexNames.size(); ++which)
            append (text, indexNames[which], juce::String (slot.paramIndices[which]));
        append (text, "program", juce::String (slot.state.program));
        text += '>';
        text += juce::Base64::toBase64 (slot.state.bytes.getData(), slot.state.bytes.getSize()).toStdString();
        text += "</slot>\n";
    }
    text += "</vstSlots>\n";
    return text;
}

#include "plugins/catalogue/PluginListFile.h"

#include "support/xml/XmlCharacters.h"
#include "support/xml/XmlPullParser.h"

#include <array>

namespace
{
/** Most plug-ins that a list may hold. */
constexpr size_t maxEntries = 20000;

/** An attribute, under JUCE's name for it where JUCE has one. */
struct Text
{
    const char* name;
    juce::String& (*of) (KnownPluginEntry&);
};

constexpr std::array texts {
    Text { "name", [] (KnownPluginEntry& e) -> juce::String& { return e.description.name; } },
    Text { "descriptiveName",
           [] (KnownPluginEntry& e) -> juce::String& { return e.description.descriptiveName; } },
    Text { "format", [] (KnownPluginEntry& e) -> juce::String& { return e.description.pluginFormatName; } },
    Text { "category", [] (KnownPluginEntry& e) -> juce::String& { return e.description.category; } },
    Text { "manufacturer",
           [] (KnownPluginEntry& e) -> juce::String& { return e.description.manufacturerName; } },
    Text { "version", [] (KnownPluginEntry& e) -> juce::String& { return e.description.version; } },
    Text { "file", [] (KnownPluginEntry& e) -> juce::String& { return e.description.fileOrIdentifier; } },
    Text { "scannedFile", [] (KnownPluginEntry& e) -> juce::String& { return e.file; } },
    Text { "reason", [] (KnownPluginEntry& e) -> juce::String& { return e.reason; } },
};

constexpr std::array states { VerifiedState::verified, VerifiedState::failed, VerifiedState::crashed };

juce::String textOf (const XmlPullParser& parser, const char* name)
{
    const auto* value = parser.attribute (name);
    return value != nullptr ? juce::String::fromUTF8 (value->data(), static_cast<int> (value->size()))
                            : juce::String();
}

KnownPluginEntry entryIn (const XmlPullParser& parser)
{
    KnownPluginEntry entry;
    for (const auto& text : texts)
        text.of (entry) = textOf (parser, text.name);
    auto& plugin = entry.description;
    plugin.uniqueId = textOf (parser, "uniqueId").getHexValue32();
    plugin.deprecatedUid = textOf (parser, "uid").getHexValue32();
    plugin.isInstrument = textOf (parser, "isInstrument").getIntValue() != 0;
    plugin.hasSharedContainer = textOf (parser, "isShell").getIntValue() != 0;
    plugin.numInputChannels = textOf (parser, "numInputs").getIntValue();
    plugin.numOutputChannels = textOf (parser, "numOutputs").getIntValue();
    entry.latency = juce::jmax (0, textOf (parser, "latency").getIntValue());
    entry.fileTime = textOf (parser, "fileTime").getHexValue64();
    const auto word = textOf (parser, "verified");
    for (const auto state : states)
        if (word == wordOf (state))
            entry.state = state;
    if (entry.file.isEmpty())
        entry.file = plugin.fileOrIdentifier;
    return entry;
}

void append (std::string& text, const char* name, const juce::String& value)
{
    text += ' ';
    text += name;
    text += "=\"";
    text += XmlCharacters::escape (value.toStdString());
    text += '"';
}

void append (std::string& text, KnownPluginEntry entry)
{
    const auto& plugin = entry.description;
    text += "    <PLUGIN";
    for (const auto& each : texts)
        append (text, each.name, each.of (entry));
    append (text, "uniqueId", juce::String::toHexString (plugin.uniqueId));
    append (text, "uid", juce::String::toHexString (plugin.deprecatedUid));
    append (text, "isInstrument", plugin.isInstrument ? "1" : "0");
    append (text, "isShell", plugin.hasSharedContainer ? "1" : "0");
    append (text, "numInputs", juce::String (plugin.numInputChannels));
    append (text, "numOutputs", juce::String (plugin.numOutputChannels));
    append (text, "latency", juce::String (entry.latency));
    append (text, "fileTime", juce::String::toHexString (entry.fileTime));
    append (text, "verified", wordOf (entry.state));
    text += "/>\n";
}
}

const char* wordOf (VerifiedState state)
{
    switch (state)
    {
    case VerifiedState::failed:
        return "FAILED";
    case VerifiedState::crashed:
        return "CRASHED";
    case VerifiedState::verified:
        break;
    }
    return "";
}

std::optional<std::vector<KnownPluginEntry>> PluginListFile::read (std::string_view bytes)
{
    using Event = XmlPullParser::Event;
    XmlPullParser parser (std::make_unique<juce::MemoryInputStream> (bytes.data(), bytes.size(), false));
    std::vector<KnownPluginEntry> entries;
    auto hasRoot = false;
    for (auto event = parser.next(); event != Event::finished && event != Event::failed;
         event = parser.next())
    {
        if (event != Event::start)
            continue;
        if (!hasRoot && parser.name() != "pluginList")
            return {};
        hasRoot = true;
        if (parser.name() != "PLUGIN" || parser.depth() != 3 || entries.size() == maxEntries)
            continue;
        if (auto entry = entryIn (parser); entry.file.isNotEmpty())
            entries.push_back (std::move (entry));
    }
    if (!hasRoot)
        return {};
    return entries;
}

std::string PluginListFile::write (const std::vector<KnownPluginEntry>& entries)
{
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<pluginList version=\"2000\" name=\"\">\n"
                       "  <KNOWNPLUGINS>\n";
    for (const auto& entry : entries)
        append (text, entry);
    text += "  </KNOWNPLUGINS>\n</pluginList>\n";
    return text;
}

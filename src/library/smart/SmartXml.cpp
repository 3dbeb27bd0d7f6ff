#include "library/smart/SmartField.h"
#include "library/smart/SmartPlaylist.h"
#include "support/xml/XmlCharacters.h"
#include "support/xml/XmlPullParser.h"

#include <limits>

namespace
{
juce::String escaped (const juce::String& text)
{
    return juce::String (XmlCharacters::escape (text.toStdString()));
}

juce::String attribute (const char* name, const juce::String& value)
{
    return juce::String (" ") + name + "=\"" + escaped (value) + "\"";
}

juce::String ruleXml (const SmartRule& rule)
{
    const auto field = static_cast<SongField> (rule.field);
    const auto isOperator =
        rule.operatorNumber >= 0 && rule.operatorNumber < static_cast<int32_t> (operatorNames.size());
    return "<rule" + attribute ("field", hasColumn (field) ? nameOf (columnOf (field)) : "")
           + attribute ("operator",
                        isOperator ? operatorNames[static_cast<size_t> (rule.operatorNumber)] : "")
           + attribute ("value1", rule.value1) + attribute ("value2", rule.value2) + "/>";
}

juce::String toString (const std::string& text)
{
    return juce::String::fromUTF8 (text.data(), static_cast<int> (text.size()));
}

std::string attributeOf (const XmlPullParser& parser, std::string_view name)
{
    const auto* value = parser.attribute (name);
    return value != nullptr ? *value : std::string();
}

SmartRule ruleOf (const XmlPullParser& parser)
{
    SmartRule rule;
    if (const auto field = fieldOfColumn (attributeOf (parser, "field")))
        rule.field = static_cast<int32_t> (*field);
    rule.operatorNumber = operatorOfName (attributeOf (parser, "operator"));
    rule.value1 = toString (attributeOf (parser, "value1"));
    rule.value2 = toString (attributeOf (parser, "value2"));
    return rule;
}

/** A count of songs: what is above 32 bits counts as the most, what is no number or below 1 as none. */
int32_t countOf (const juce::String& text)
{
    const auto digits = text.trim();
    if (digits.isEmpty() || !digits.containsOnly ("0123456789"))
        return 0;
    return digits.trimCharactersAtStart ("0").length() > 9 ? std::numeric_limits<int32_t>::max()
                                                           : digits.getIntValue();
}
}

juce::String buildXml (const SmartPlaylist& playlist)
{
    juce::String xml ("<?xml version=\"1.0\" encoding=\"UTF-8\"?> <smartplaylist>");
    xml << "<match>" << (playlist.matchAll ? "all" : "any") << "</match>";
    for (const auto& rule : playlist.rules)
        xml << ruleXml (rule);
    if (playlist.limit > 0)
        xml << "<limit>" << playlist.limit << "</limit>";
    xml << "<order" << attribute ("apply", playlist.limited ? "yes" : "no")
        << attribute ("direction", playlist.ascending ? "ascending" : "descending") << ">"
        << escaped (playlist.orderField) << "</order></smartplaylist>";
    return xml;
}

bool parseXml (const juce::String& text, SmartPlaylist& playlist)
{
    using Event = XmlPullParser::Event;
    auto parser = XmlPullParser::ofText (text);
    SmartPlaylist read;
    std::string content;
    auto isApplied = true;
    for (auto event = parser.next(); event != Event::finished; event = parser.next())
    {
        const auto& name = parser.name();
        if (event == Event::failed
            || (parser.depth() == 1 && event == Event::start && name != "smartplaylist"))
            return false;
        if (parser.depth() == 2 && event == Event::start)
        {
            content.clear();
            if (name == "rule")
                read.rules.push_back (ruleOf (parser));
            else if (name == "order")
            {
                isApplied = attributeOf (parser, "apply") != "no";
                read.ascending = attributeOf (parser, "direction") != "descending";
            }
        }
        else if (parser.depth() == 2 && event == Event::text)
            content += parser.text();
        else if (parser.depth() == 1 && event == Event::end)
        {
            if (name == "match")
                read.matchAll = toString (content).trim() == "all";
            else if (name == "limit")
                read.limit = countOf (toString (content));
            else if (name == "order")
                read.orderField = toString (content).trim();
        }
    }
    read.limited = isApplied && read.limit > 0;
    playlist = std::move (read);
    return true;
}

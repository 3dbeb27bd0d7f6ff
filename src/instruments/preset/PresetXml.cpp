#include "instruments/preset/PresetXml.h"

#include "support/language/Translate.h"
#include "support/xml/XmlCharacters.h"

#include <charconv>

namespace
{
constexpr size_t longestName = 100;

std::optional<int> numberOf (std::string_view text)
{
    int number = 0;
    const auto* end = text.data() + text.size();
    if (const auto [stopped, error] = std::from_chars (text.data(), end, number);
        error != std::errc {} || stopped != end)
        return {};
    return number;
}
}

namespace PresetXml
{
XmlPullParser parserFor (std::string_view bytes)
{
    return XmlPullParser (std::make_unique<juce::MemoryInputStream> (bytes.data(), bytes.size(), false));
}

std::string readDocument (std::string_view bytes, const std::function<std::string (XmlPullParser&)>& read)
{
    if (bytes.size() > largestFile)
        return N_ ("It is too large for a preset.");
    auto parser = parserFor (bytes);
    if (parser.next() != XmlPullParser::Event::start)
        return N_ ("It is no XML text.");
    if (auto fault = read (parser); !fault.empty())
        return fault;
    for (;;)
        switch (parser.next())
        {
        case XmlPullParser::Event::finished:
            return {};
        case XmlPullParser::Event::failed:
            return N_ ("It is not a whole XML text.");
        default:
            break;
        }
}

std::string checkRoot (const XmlPullParser& parser, std::string_view root)
{
    if (parser.name() != root)
        return tr ("It holds no %1.", std::string (root)).toStdString();
    if (parser.attribute ("version") != nullptr && numberIn (parser, "version", -1) != version)
        return N_ ("It was written by another version.");
    return {};
}

std::string readChildren (XmlPullParser& parser, const std::function<std::string()>& onChild)
{
    const auto depth = parser.depth();
    while (parser.depth() >= depth)
        switch (parser.next())
        {
        case XmlPullParser::Event::start:
            // The depth says whether `onChild` has gone to its end, so what it leaves unread is skipped here.
            if (parser.depth() == depth + 1)
                if (auto fault = onChild(); !fault.empty())
                    return fault;
            break;
        case XmlPullParser::Event::failed:
        case XmlPullParser::Event::finished:
            return N_ ("It is not a whole XML text.");
        default:
            break;
        }
    return {};
}

std::string readCurve (const XmlPullParser& parser, Curve& curve)
{
    const auto* data = parser.attribute ("data");
    if (data == nullptr)
        return N_ ("It leaves a curve out.");
    if (data->size() >= XmlPullParser::maxValueBytes)
        return sentenceFor (EnvelopeFault::tooManyPoints);
    if (const auto fault = curve.envelope.fromText (*data); fault != EnvelopeFault::none)
        return sentenceFor (fault);
    curve.visible = numberIn (parser, "visible", 1) != 0;
    curve.enabled = numberIn (parser, "enabled", 0) != 0;
    return {};
}

int numberIn (const XmlPullParser& parser, std::string_view attribute, int otherwise)
{
    const auto* text = parser.attribute (attribute);
    return text != nullptr ? numberOf (*text).value_or (otherwise) : otherwise;
}

std::string nameIn (const XmlPullParser& parser, std::string_view attribute)
{
    const auto* text = parser.attribute (attribute);
    if (text == nullptr)
        return {};
    std::string name;
    for (const auto c : text->substr (0, longestName))
        if (static_cast<unsigned char> (c) >= ' ' && c != 0x7f)
            name += c;
    // A character that was cut in two goes.
    while (!name.empty()
           && !juce::CharPointer_UTF8::isValidString (name.data(), static_cast<int> (name.size())))
        name.pop_back();
    return name;
}

std::string openRoot (std::string_view root, std::string_view name, int indent)
{
    return std::string (static_cast<size_t> (indent), ' ') + "<" + std::string (root) + " version=\""
           + std::to_string (version) + "\" name=\"" + XmlCharacters::escape (std::string (name)) + "\">\n";
}

std::string write (const Curve& curve, int indent)
{
    return std::string (static_cast<size_t> (indent), ' ') + "<Env data=\"" + curve.envelope.toText()
           + "\" visible=\"" + (curve.visible ? "1" : "0") + "\" enabled=\"" + (curve.enabled ? "1" : "0")
           + "\"/>\n";
}

std::string header()
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n\n";
}

std::string sentence (std::string_view fileName, std::string_view fault)
{
    return tr ("Nothing was loaded from %1. %2", std::string (fileName),
               tr (juce::String (std::string (fault))))
        .toStdString();
}
}

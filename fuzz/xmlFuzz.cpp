#include "Check.h"

#include "library/formats/PropertyList.h"
#include "support/xml/XmlPullParser.h"

namespace
{
bool isText (const std::string& bytes)
{
    return juce::CharPointer_UTF8::isValidString (bytes.data(), static_cast<int> (bytes.size()));
}

void pull (XmlPullParser& parser, size_t size)
{
    using Event = XmlPullParser::Event;
    auto depth = 0;
    for (size_t events = 0;; ++events)
    {
        FUZZ_CHECK (events <= 2 * size + 2);
        const auto event = parser.next();
        depth += event == Event::start ? 1 : event == Event::end ? -1 : 0;
        FUZZ_CHECK (depth == parser.depth() && depth >= 0);
        FUZZ_CHECK (isText (parser.name()) && parser.name().size() <= XmlPullParser::maxNameBytes + 4);
        FUZZ_CHECK (isText (parser.text()) && parser.text().size() <= XmlPullParser::maxTextBytes + 16);
        FUZZ_CHECK (parser.position() <= static_cast<juce::int64> (size));
        if (event == Event::failed || event == Event::finished)
        {
            FUZZ_CHECK (parser.fault().has_value() == (event == Event::failed));
            FUZZ_CHECK (event == Event::failed || depth == 0);
            FUZZ_CHECK (parser.next() == event);
            return;
        }
    }
}
}

/** The parser comes to an end with starts and ends in balance, and the music library's reader on top of it too. */
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    const auto stream = [&] { return std::make_unique<juce::MemoryInputStream> (data, size, false); };
    XmlPullParser parser (stream());
    pull (parser, size);

    PropertyList::Visitor visitor;
    visitor.onTrack = [] (const PropertyList::Track&, double part) { return part >= 0.0 && part <= 1.0; };
    PropertyList::read (stream(), visitor);
    return 0;
}

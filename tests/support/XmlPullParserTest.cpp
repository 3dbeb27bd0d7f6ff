#include "support/xml/XmlPullParser.h"

#include <gtest/gtest.h>

namespace
{
using Event = XmlPullParser::Event;

std::unique_ptr<juce::InputStream> streamOf (const std::string& bytes)
{
    return std::make_unique<juce::MemoryInputStream> (bytes.data(), bytes.size(), true);
}

/** The events of a document as text: "<a x=1>text</a>", and behind it the word of the fault. */
std::string traceOf (const std::string& bytes)
{
    XmlPullParser parser (streamOf (bytes));
    std::string trace;
    for (auto event = parser.next(); event != Event::finished; event = parser.next())
    {
        if (event == Event::failed)
            return trace + " " + wordOf (*parser.fault());
        if (event == Event::text)
        {
            trace += parser.text();
            continue;
        }
        trace += (event == Event::end ? "</" : "<") + parser.name();
        for (const auto* name : { "x", "y" })
            if (const auto* value = parser.attribute (name); value != nullptr && event == Event::start)
                trace += std::string (" ") + name + "=" + *value;
        trace += ">";
    }
    return trace;
}

std::string utf16 (const std::string& text, bool isBig)
{
    std::string bytes;
    const juce::String source = juce::String::fromUTF8 (text.c_str());
    for (auto unit = source.toUTF16(); *unit.getAddress() != 0;
         unit = juce::CharPointer_UTF16 (unit.getAddress() + 1))
    {
        const auto value = static_cast<uint16_t> (*unit.getAddress());
        const char low = static_cast<char> (value & 0xff), high = static_cast<char> (value >> 8);
        bytes += isBig ? std::string { high, low } : std::string { low, high };
    }
    return bytes;
}

/** A source that is never in memory: a head, one piece again and again, a tail. */
class Endless : public juce::InputStream
{
public:
    Endless (std::string h, std::string p, juce::int64 n, std::string t)
        : head (std::move (h)),
          piece (std::move (p)),
          tail (std::move (t)),
          pieces (n)
    {
    }

    juce::int64 getTotalLength() override
    {
        return static_cast<juce::int64> (head.size() + tail.size())
               + pieces * static_cast<juce::int64> (piece.size());
    }
    bool isExhausted() override { return position >= getTotalLength(); }
    juce::int64 getPosition() override { return position; }
    bool setPosition (juce::int64) override { return false; }

    int read (void* target, int wanted) override
    {
        auto* out = static_cast<char*> (target);
        auto done = 0;
        for (; done < wanted && !isExhausted(); ++done, ++position)
        {
            const auto at = position - static_cast<juce::int64> (head.size());
            const auto inPieces = pieces * static_cast<juce::int64> (piece.size());
            out[done] = at < 0          ? head[static_cast<size_t> (position)]
                        : at < inPieces ? piece[static_cast<size_t> (at) % piece.size()]
                                        : tail[static_cast<size_t> (at - inPieces)];
        }
        return done;
    }

private:
    const std::string head, piece, tail;
    const juce::int64 pieces;
    juce::int64 position = 0;
};
}

TEST (XmlPullParser, GivesTheEventsOfADocument)
{
    const std::pair<std::string, std::string> documents[] {
        { "<a/>", "<a></a>" },
        { "<?xml version='1.0'?>\n<!-- a > -- b --><a x='1' y=\"&lt;2'\"> t </a >\n<!-- c -->",
          "<a x=1 y=<2'> t </a>" },
        { "<a x=1 y = '2' x='3' z>", "<a x=1 y=2> unended_start_tag" },
        { "<!DOCTYPE a [<!ENTITY e \"]>\"><!-- don't --><!ELEMENT a ANY>]><a>&e;</a>", "<a>&e;</a>" },
        { "<a>&amp;&#65;&#x42;&quot;&apos;&gt; &nope; & &#xD800;&#0;&#x110000;&#99999999999;</a>",
          "<a>&AB\"'> &nope; & \xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd</a>" },
        { "<a>1 < 2<![CDATA[<b>&amp;]] ]>]]]]>]]></a>", "<a>1 < 2<b>&amp;]] ]>]]]]></a>" },
        { "<a>t<!-- -->u<?p ?>v<b/>w</a>", "<a>tuv<b></b>w</a>" },
        { "<\xc3\xa4 x='\xe9'>\xff\xe2\x82</\xc3\xa4>",
          "<\xc3\xa4 x=\xc3\xa9>\xc3\xbf\xc3\xa2\xc2\x82</\xc3\xa4>" },
        { "\xef\xbb\xbf<a/>", "<a></a>" },
        { "text <a/> text", "<a></a>" },
        { "", " no_root_element" },
        { "only text & nothing else", " no_root_element" },
        { "<a/><b/>", "<a></a> root_has_sibling" },
        { "</a>", " lone_end_tag" },
        { "<a></b></a>", "<a> lone_end_tag" },
        { "<a><b></a>", "<a><b> unended_start_tag" },
        { "<a <b/></a>", " unended_start_tag" },
        { "<a>text", "<a>text unended_start_tag" },
        { "<a", " truncation_error" },
        { "<a x='1", " truncation_error" },
        { "<a></a", "<a> truncation_error" },
        { "<a><!-- ->", "<a> truncation_error" },
        { "<a><![CDATA[t]]", "<a>t truncation_error" },
        { "<!DOCTYPE a [<!ENTITY", " truncation_error" },
    };
    for (const auto& [document, expected] : documents)
        EXPECT_EQ (traceOf (document), expected) << document;
}

TEST (XmlPullParser, ReadsEveryEncodingAlike)
{
    const std::string document ("<a x='\xc3\xa9'>\xf0\x9d\x84\x9e \xe2\x82\xac</a>");
    const auto expected = "<a x=\xc3\xa9>\xf0\x9d\x84\x9e \xe2\x82\xac</a>";
    std::string withNulls = document;
    withNulls.insert (3, 2, '\0').append (1, '\0');

    const std::tuple<std::string, bool, bool> encodings[] {
        { document, false, false },
        { utf16 (document, false), false, false },
        { utf16 (document, true), false, true },
        { utf16 ("\xef\xbb\xbf" + document, false), false, false },
        { utf16 ("\xef\xbb\xbf" + document, true), false, true },
        { withNulls, true, false },
    };
    for (const auto& [bytes, hasNulls, isSwapped] : encodings)
    {
        EXPECT_EQ (traceOf (bytes), expected);
        XmlPullParser parser (streamOf (bytes));
        while (parser.next() != Event::finished)
            ASSERT_FALSE (parser.fault());
        EXPECT_EQ (parser.hasMet (XmlFault::nullsRemoved), hasNulls);
        EXPECT_EQ (parser.hasMet (XmlFault::endianSwap), isSwapped);
    }
    EXPECT_EQ (traceOf (utf16 (document, true) + "x"), expected + std::string (" truncation_error"));
    EXPECT_EQ (traceOf (utf16 ("<a>", false) + std::string ("\x3c\xd8", 2) + utf16 ("</a>", false)),
               "<a>\xef\xbf\xbd</a>");
}

TEST (XmlPullParser, SaysThatAFileCannotBeRead)
{
    for (const auto& file :
         { juce::File ("/nowhere/at all.xml"), juce::File::getSpecialLocation (juce::File::tempDirectory) })
    {
        XmlPullParser parser (file);
        EXPECT_EQ (parser.next(), Event::failed);
        EXPECT_EQ (parser.fault(), XmlFault::fileError);
    }
}

TEST (XmlPullParser, HoldsItsLimitsOnBoundlessDocuments)
{
    constexpr juce::int64 many = 300'000;
    const std::tuple<const char*, const char*, const char*, const char*> documents[] {
        { "<a>", "text ", "</a>", "" },
        { "<a><![CDATA[", "]]]", "></a>", "" },
        { "<a><![CDATA[", "]]", "]", "truncation_error" },
        { "<a x='", "\xe2\x82\xac", "'/>", "" },
        { "<", "name", "/>", "" },
        { "<a ", "x='1' y0='2' ", "/>", "" },
        { "<a>", "<b/>", "</a>", "" },
        { "<!--", "--", "><a/>", "" },
        { "<a>&", "amp", ";</a>", "" },
        { "", "<a>", "", "unended_start_tag" },
        { "<a>", "&#x20AC;", "</a>", "" },
        { "<!DOCTYPE ", "<!", "", "truncation_error" },
    };
    for (const auto& [head, piece, tail, fault] : documents)
    {
        XmlPullParser parser (std::make_unique<Endless> (head, piece, many, tail));
        auto event = Event::start;
        size_t longest = 0, textBytes = 0;
        while (event != Event::finished && event != Event::failed)
        {
            event = parser.next();
            const auto* x = parser.attribute ("x");
            longest = std::max (
                { longest, parser.text().size(), parser.name().size(), x != nullptr ? x->size() : 0 });
            textBytes += event == Event::text ? parser.text().size() : 0;
        }
        EXPECT_LE (longest, XmlPullParser::maxTextBytes + 16) << head << piece;
        EXPECT_EQ (parser.fault() ? wordOf (*parser.fault()) : std::string(), fault) << head << piece;
        EXPECT_TRUE (piece != std::string ("text ") || textBytes == 5u * many);
    }
}

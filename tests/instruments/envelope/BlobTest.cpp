#include "Curves.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

namespace
{
/** A blob that is put together by hand. */
struct Bytes : std::vector<std::uint8_t>
{
    template <class T>
    Bytes& add (T number)
    {
        const auto* begin = reinterpret_cast<const std::uint8_t*> (&number);
        insert (end(), begin, begin + sizeof (T));
        return *this;
    }

    Bytes& header (std::int32_t version, std::int32_t count, std::int32_t format = 3)
    {
        return add (format).add (version).add (count);
    }

    Bytes& flags (std::initializer_list<int> bytes)
    {
        for (const auto byte : bytes)
            add (static_cast<std::uint8_t> (byte));
        return *this;
    }

    Bytes& tail()
    {
        flags ({ 3, 0, 0, 0 });
        insert (end(), 16, 0xff);
        return *this;
    }
};

Bytes twoHeldPoints (std::int32_t version)
{
    Bytes bytes;
    bytes.header (version, 2);
    bytes.add (0.0).add (1.0).add (0.0f).flags ({ 2, 0, 7, 8 });
    bytes.add (4.0).add (0.25).add (-0.5f).flags ({ 2, 1, 0, 0 });
    return bytes.tail();
}
}

TEST (EnvelopeBlob, EveryVersionIsWrittenAsTheThird)
{
    for (const auto version : { 2, 3 })
    {
        Envelope envelope;
        ASSERT_TRUE (envelope.read (twoHeldPoints (version)));
        EXPECT_EQ (envelope.blob(), twoHeldPoints (3));
        EXPECT_EQ (envelope.markerZero, -1);
        EXPECT_EQ (envelope.markerSustain, 255);
        EXPECT_EQ (envelope.tailFlags[0], 3);
    }

    Bytes first, zeroth;
    first.header (1, 1).add (0.5f).add (0.75f).add (0.25f).flags ({ 9, 1, 2, 3 }).tail();
    zeroth.header (0, 1).add (0.5f).add (0.75f).add (0.25f).tail();
    for (const auto* bytes : { &first, &zeroth })
    {
        Envelope envelope;
        ASSERT_TRUE (envelope.read (*bytes));
        EXPECT_EQ (envelope.faultIn (*bytes), EnvelopeFault::none);
        EXPECT_EQ (envelope.point (0).delta, 0.5);
        EXPECT_EQ (envelope.point (0).value, 0.75f);
        EXPECT_EQ (envelope.point (0).tension, 0.25f);
        EXPECT_EQ (envelope.point (0).type, bytes == &first ? 9 : 0);
        EXPECT_EQ (envelope.markerSustain, 255);
    }

    Bytes sixth;
    sixth.header (1, 1, 6).add (0.5).add (0.75f).add (0.25f).flags ({ 9, 1, 2, 3 }).tail();
    Envelope envelope;
    EXPECT_FALSE (envelope.read (sixth));
    envelope.format = 6;
    ASSERT_TRUE (envelope.read (sixth));
    EXPECT_EQ (envelope.point (0).delta, 0.5);
}

TEST (EnvelopeBlob, OnlyTheLowestByteOfTheSustainMarkerIsStored)
{
    Envelope envelope;
    envelope.markerSustain = 0x12345678;
    ASSERT_TRUE (envelope.read (twoHeldPoints (3)));
    EXPECT_EQ (envelope.markerSustain, 0x123456ff);
}

TEST (EnvelopeBlob, ANewEnvelopeHasTheKnownText)
{
    const auto text = Envelope().toText();
    EXPECT_EQ (text.substr (0, 36), "03 00 00 00 03 00 00 00 02 00 00 00 ");
    EXPECT_EQ (text.substr (text.size() - 59), "00 00 00 00 00 00 00 01 00 00 00 01 00 00 00 ff ff ff ff 02");
}

TEST (EnvelopeBlob, TextAndElementComeBackByteForByte)
{
    for (unsigned seed = 0; seed < 50; ++seed)
    {
        const auto envelope = Curves::random (seed, static_cast<int> (seed));
        Envelope fromText, fromXml, fromStream;
        EXPECT_EQ (fromText.fromText (envelope.toText()), EnvelopeFault::none);
        EXPECT_TRUE (fromXml.fromXml (*envelope.toXml()));
        juce::MemoryOutputStream out;
        envelope.write (out);
        juce::MemoryInputStream in (out.getData(), out.getDataSize(), false);
        EXPECT_TRUE (fromStream.read (in));
        for (const auto* copy : { &fromText, &fromXml, &fromStream })
            EXPECT_TRUE (copy->isSameCurve (envelope));
    }
}

TEST (EnvelopeBlob, BrokenOnesChangeNothingAndAreTold)
{
    auto cutOff = twoHeldPoints (3), cutTail = cutOff, wide = cutOff, late = cutOff;
    cutOff.resize (30);
    cutTail.pop_back();
    wide[8] = 0xff;
    wide[9] = 0xff;
    late[4] = 4;
    const auto withLevel = [] (double delta, double level, float tension = 0.0f) {
        return Bytes().header (3, 1).add (delta).add (level).add (tension).flags ({ 0, 0, 0, 0 }).tail();
    };
    for (const auto& [bytes, fault] : std::vector<std::pair<Bytes, EnvelopeFault>> {
             { {}, EnvelopeFault::cutOff },
             { cutOff, EnvelopeFault::cutOff },
             { cutTail, EnvelopeFault::cutOff },
             { wide, EnvelopeFault::tooManyPoints },
             { Bytes().header (3, -1).tail(), EnvelopeFault::tooManyPoints },
             { late, EnvelopeFault::newerVersion },
             { Bytes().header (3, 0, 4).tail(), EnvelopeFault::otherFormat },
             { Bytes().header (-1, 0).tail(), EnvelopeFault::oddNumber },
             { withLevel (-1.0, 0.5), EnvelopeFault::oddNumber },
             { withLevel (1e300, 0.5), EnvelopeFault::oddNumber },
             { withLevel (1.0, -0.5), EnvelopeFault::oddNumber },
             { withLevel (1.0, 1.5), EnvelopeFault::oddNumber },
             { withLevel (1.0, std::numeric_limits<double>::quiet_NaN()), EnvelopeFault::oddNumber },
             { withLevel (1.0, 1e38), EnvelopeFault::oddNumber },
             { withLevel (1.0, 0.5, 1.5f), EnvelopeFault::oddNumber } })
    {
        const auto before = Curves::random (5);
        auto envelope = before;
        EXPECT_EQ (envelope.faultIn (bytes), fault);
        Envelope written;
        std::string text;
        for (const auto byte : bytes)
            text += juce::String::toHexString (static_cast<int> (byte)).paddedLeft ('0', 2).toStdString();
        EXPECT_EQ (envelope.fromText (text), fault);
        EXPECT_TRUE (envelope.isSameCurve (before));
        EXPECT_STRNE (sentenceFor (fault), "");
    }
    Envelope envelope;
    for (const auto* text : { "0", "03 0", "0 3", "03,00", "zz" })
        EXPECT_EQ (envelope.fromText (text), EnvelopeFault::noHexText) << text;
}

TEST (EnvelopeBlob, AShortOneLeavesTheRestAtTheDefaults)
{
    auto bytes = twoHeldPoints (3);
    bytes.resize (12 + 24);
    Envelope envelope;
    ASSERT_TRUE (envelope.read (bytes));
    EXPECT_EQ (envelope.point (0).value, 1.0f);
    EXPECT_EQ (envelope.point (1).delta, 1.0);
    EXPECT_EQ (envelope.point (1).tension, 0.5f);
    EXPECT_EQ (envelope.markerSustain, 2);
}

#include "settings/SettingsText.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>

namespace
{
SettingsText fromBytes (const std::string& bytes)
{
    SettingsText text;
    std::memcpy (static_cast<void*> (&text), bytes.data(), std::min (bytes.size(), sizeof text));
    return text;
}

std::string bytesOf (const SettingsText& text)
{
    return { reinterpret_cast<const char*> (&text), sizeof text };
}
}

TEST (SettingsText, CutsAt1023BytesAndNeverInsideACharacter)
{
    struct Case
    {
        const char* character;
        size_t bytes;
    };
    for (const auto& [character, bytes] : { Case { "a", 1 }, Case { "\xc3\xa9", 2 },
                                            Case { "\xe2\x82\xac", 3 }, Case { "\xf0\x9d\x84\x9e", 4 } })
        for (int lead = 0; lead < 4; ++lead)
        {
            const auto start = juce::String::repeatedString ("x", lead);
            const auto unit = juce::String::fromUTF8 (character);
            const SettingsText text (start + juce::String::repeatedString (unit, 1200));

            const auto fitting = (SettingsText::maxBytes - static_cast<size_t> (lead)) / bytes;
            EXPECT_EQ (text.get(), start + juce::String::repeatedString (unit, static_cast<int> (fitting)))
                << bytes << " bytes after " << lead;
            EXPECT_EQ (bytesOf (text).back(), '\0');
        }
}

TEST (SettingsText, LeavesNothingOfALongerTextBehindAShorterOne)
{
    SettingsText text (juce::String::repeatedString ("/folder", 100));
    text.set ("/f");
    EXPECT_EQ (bytesOf (text), "/f" + std::string (1022, '\0'));
    text.set ({});
    EXPECT_TRUE (text.get().isEmpty());
}

TEST (SettingsText, TakesWhatIsNotUtf8AsLatin1)
{
    for (const std::string bytes : { "/Musik/\xfc"
                                     "ber",
                                     "\xc3",
                                     "\xff\xfe"
                                     "a",
                                     "\x80\x80" })
    {
        const auto text = fromBytes (bytes).get();
        ASSERT_EQ (static_cast<size_t> (text.length()), bytes.size());
        for (size_t i = 0; i < bytes.size(); ++i)
            EXPECT_EQ (static_cast<unsigned> (text[static_cast<int> (i)]),
                       static_cast<unsigned char> (bytes[i]));
    }
}

TEST (SettingsText, AnyBytesGiveAWellFormedTextThatKeeps)
{
    std::mt19937 random (1);
    // Bytes that start or continue a character, mixed with plain ones: the faults lie where those meet.
    const std::string palette ("a/\x80\xbf\xc3\xa9\xe2\x82\xac\xed\xa0\xf0\x9d\x84\x9e\xf4\xf8\xff");
    for (int round = 0; round < 3000; ++round)
    {
        std::string bytes (random() % 2 == 0 ? 1024 : random() % 1024, '\0');
        for (auto& byte : bytes)
            byte = palette[random() % palette.size()];
        const auto text = fromBytes (bytes).get();
        ASSERT_TRUE (juce::CharPointer_UTF8::isValidString (text.toRawUTF8(),
                                                            static_cast<int> (text.getNumBytesAsUTF8())));
        const SettingsText kept (text);
        ASSERT_TRUE (text.startsWith (kept.get()));
        ASSERT_EQ (SettingsText (kept.get()).get(), kept.get());
    }
}

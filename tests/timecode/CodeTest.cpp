#include "timecode/ControlDisc.h"
#include "timecode/ControlDiscFile.h"
#include "timecode/ControlMedium.h"

#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <juce_audio_formats/juce_audio_formats.h>

#include <cmath>
#include <set>

namespace
{
std::vector<unsigned> cyclesFrom (const GrooveCode& code, std::int64_t first)
{
    std::vector<unsigned> cycles;
    for (int i = 0; i < code.cyclesToLocate(); ++i)
        cycles.push_back (code.bitsAt (first + i));
    return cycles;
}

juce::MemoryBlock contents (const juce::File& file)
{
    juce::MemoryBlock block;
    file.loadFileAsData (block);
    return block;
}

/** Whole frames of a WAV file by its header. */
juce::int64 framesIn (const juce::File& file)
{
    const std::unique_ptr<juce::AudioFormatReader> reader (
        juce::WavAudioFormat().createReaderFor (file.createInputStream().release(), true));
    if (reader == nullptr || reader->lengthInSamples % controlDisc::samplesPerFrame != 0)
        return -1;
    return reader->lengthInSamples / controlDisc::samplesPerFrame;
}
}

TEST (GrooveCode, EveryPlaceOfEveryMediumIsFoundAgain)
{
    for (const auto& medium : controlMedia())
    {
        const auto code = codeOf (medium);
        ASSERT_EQ (code->length(), medium.length) << medium.id;
        const auto last = medium.length - code->cyclesToLocate();
        std::set<std::int64_t> firsts { 0, 1, 5, 6, last };
        for (std::int64_t first = 7; first < last; first += 61)
            firsts.insert (first);
        for (const auto first : firsts)
            ASSERT_EQ (code->locate (cyclesFrom (*code, first)), first) << medium.id << " at cycle " << first;
    }
}

TEST (GrooveCode, ASilentGrooveStandsNowhere)
{
    for (const auto& medium : controlMedia())
    {
        const auto code = codeOf (medium);
        const std::vector<unsigned> silence (static_cast<std::size_t> (code->cyclesToLocate()), 0U);
        EXPECT_FALSE (code->locate (silence).has_value()) << medium.id;
    }
}

TEST (ControlDisc, AFrameCarriesItsNumberInBursts)
{
    std::array<float, controlDisc::samplesPerFrame> left {}, right {};
    for (const auto number : { 0U, 1U, 0xfffffU, 0x5a5a5U, 244799U })
    {
        ASSERT_EQ (controlDisc::generateFrame (number, left.data(), right.data()),
                   controlDisc::samplesPerFrame);
        unsigned read = 0;
        for (std::size_t cycle = 0; cycle < 6; ++cycle)
            for (std::size_t slot = 0; slot < 6; ++slot)
            {
                const auto middle = cycle * 48 + slot * 8 + 4;
                const auto bare =
                    0.5 * std::sin (2 * juce::MathConstants<double>::pi * static_cast<double> (middle) / 48);
                const bool isSet = std::abs (left[middle] - bare) > 0.2;
                if (cycle == 0)
                    EXPECT_TRUE (isSet) << "sync cycle, slot " << slot;
                else if (slot == 0)
                    EXPECT_FALSE (isSet);
                else if (slot < 5)
                    read = read << 1 | (isSet ? 1 : 0);
            }
        EXPECT_EQ (read, number);
    }
}

TEST (ControlDisc, TheFileIsTheSameEachTimeAndEndsWhereItIsCancelled)
{
    const TemporaryFolder folder;
    const auto once = folder.file ("once.wav"), again = folder.file ("again.wav"),
               cut = folder.file ("cut.wav");
    const auto always = [] (int) { return true; };
    ASSERT_EQ (writeControlDisc (once, 1000, always), juce::String());
    ASSERT_EQ (writeControlDisc (again, 1000, always), juce::String());
    ASSERT_EQ (writeControlDisc (cut, 1000, [] (int done) { return done < 300; }), juce::String());

    EXPECT_EQ (contents (once), contents (again));
    EXPECT_EQ (framesIn (once), 1000);
    EXPECT_GE (framesIn (cut), 300) << "the header says what is there";
    EXPECT_LT (framesIn (cut), 500);
    EXPECT_TRUE (
        writeControlDisc (folder.file ("no/such/folder/x.wav"), 10, always).contains ("can't be written"));
}

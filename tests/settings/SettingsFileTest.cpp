#include "settings/SettingsFile.h"

#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace
{
constexpr size_t fileBytes = 11756;

std::vector<std::byte> randomFile (uint32_t seed)
{
    std::mt19937 random (seed);
    std::vector<std::byte> bytes (fileBytes + 4);
    for (auto& byte : bytes)
        byte = static_cast<std::byte> (random());
    std::memcpy (bytes.data(), &settingsVersion, 4);
    return bytes;
}

void put (const juce::File& file, const std::vector<std::byte>& bytes)
{
    ASSERT_TRUE (file.replaceWithData (bytes.data(), bytes.size()));
}

/** Values of a file and how they come back from reading. A deck's are those of deck C. */
template <auto member, typename T>
void expectRepairs (std::initializer_list<std::pair<T, T>> cases)
{
    const auto field = [](EngineSettings & s) -> auto&
    {
        if constexpr (requires { s.*member; })
            return s.*member;
        else
            return s.deckSetup[2].*member;
    };
    for (const auto& [inFile, expected] : cases)
    {
        EngineSettings written, read;
        field (written) = inFile;
        readSettings (writeSettings (written), read);
        EXPECT_EQ (field (read), expected) << +inFile;
    }
}

constexpr auto notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr auto infinity = std::numeric_limits<double>::infinity();
constexpr auto subnormal = std::numeric_limits<double>::denorm_min();

class SettingsFile : public testing::Test
{
protected:
    bool load() { return loadSettings (settings, folders.setup(), folders); }
    juce::File file() const { return folders.setup().getChildFile ("platterdex.set"); }

    TemporaryFolder root;
    Folders folders { root };
    EngineSettings settings;
};
}

TEST_F (SettingsFile, MissingFileIsAFirstRunWithDefaults)
{
    settings.crossfader = 0.1;
    EXPECT_TRUE (load());
    EXPECT_EQ (writeSettings (settings), writeSettings (defaultSettings (folders)));

    EXPECT_TRUE (saveSettings (settings, folders.setup()));
    EXPECT_FALSE (load());
    EXPECT_EQ (file().getSize(), static_cast<juce::int64> (fileBytes));

    file().deleteFile();
    file().create();
    EXPECT_FALSE (load()) << "an empty file";
}

TEST_F (SettingsFile, AFirstRunsTextsLieBelowTheRootAndDecksDiffer)
{
    const auto bytes =
        writeSettings (defaultSettings (Folders { juce::File ("/opt/dj"), juce::File ("/no") }));
    juce::StringArray texts;
    for (int slot = 0; slot < 11; ++slot)
        texts.add (
            juce::String (reinterpret_cast<const char*> (&bytes[static_cast<size_t> (4 + 1024 * slot)])));
    EXPECT_EQ (texts.joinIntoString (" ").replace ("/opt/dj", "~"),
               "~/audio ~/samples ~/midi_files ~/vst_plugins ~/playlists Enter Search Keyword... "
               "~/disk_recorder/record.wav ~/slicegate_files ~/smartknob_files ~/iTunes Music Library.xml "
               "~/control_cd/control_cd.wav");
    for (int8_t deck = 0; deck < 4; ++deck)
    {
        const auto setup = defaultSettings (folders).deckSetup[static_cast<size_t> (deck)];
        EXPECT_EQ (setup.inputPair, deck);
        EXPECT_EQ (setup.crossfaderSide, deck % 2);
    }
}

TEST_F (SettingsFile, AnotherVersionGivesDefaultsAndNoFirstRun)
{
    for (const int32_t version : { 2249, 2251, 0, -1, 0x0000ca08 /* 2250 the other way round */ })
    {
        settings.crossfader = 0.1;
        auto bytes = writeSettings (settings);
        std::memcpy (bytes.data(), &version, 4);
        folders.createAll();
        put (file(), bytes);
        EXPECT_FALSE (load()) << version;
        EXPECT_EQ (writeSettings (settings), writeSettings (defaultSettings (folders))) << version;
    }
}

TEST_F (SettingsFile, EveryByteOfTheBlockSurvivesARoundTrip)
{
    // A value that may be repaired is put in range; every other byte is arbitrary, those without a name too.
    auto bytes = randomFile (7);
    bytes.resize (fileBytes);
    EngineSettings arbitrary;
    std::memcpy (static_cast<void*> (&arbitrary), bytes.data() + 4, sizeof arbitrary);
    arbitrary.masterVolume = 0.875;
    arbitrary.crossfader = 0.125;
    arbitrary.crossfaderCurve = 0.25;
    arbitrary.monitorMix = 0.375;
    arbitrary.monitorVolume = 0.625;
    arbitrary.samplerLevels.fill (0.75);
    arbitrary.editor[EditorPreference::listFontSize] = 21;
    for (int8_t deck = 0; deck < 4; ++deck)
    {
        auto& setup = arbitrary.deckSetup[static_cast<size_t> (deck)];
        setup.timecodeCalibration = 0.5 + deck;
        setup.lineGain = 3.5 - deck;
        setup.timecodeGain = 1.5f * static_cast<float> (deck);
        setup.timecodeThreshold = 0.25f * static_cast<float> (deck);
        setup.timecodeLeadIn = 10.5f;
        setup.timecodeType = static_cast<int8_t> (5 + deck);
        setup.inputPair = static_cast<int8_t> (3 - deck);
    }
    const auto written = writeSettings (arbitrary);
    readSettings (written, settings);
    EXPECT_EQ (writeSettings (settings), written);

    ASSERT_TRUE (saveSettings (settings, folders.setup()));
    EXPECT_EQ (file().getSize(), static_cast<juce::int64> (fileBytes));
    EngineSettings again;
    EXPECT_FALSE (loadSettings (again, folders.setup(), folders));
    EXPECT_EQ (writeSettings (again), written);
    EXPECT_EQ (folders.setup().getNumberOfChildFiles (juce::File::findFiles), 1)
        << "the temporary file stayed";
}

TEST_F (SettingsFile, AShortFileLeavesTheRestAsDefaultsAtEveryLength)
{
    const auto full = randomFile (11);
    settings = defaultSettings (folders);
    const auto defaults = writeSettings (settings);
    for (size_t length = 0; length <= full.size(); ++length)
    {
        settings = defaultSettings (folders);
        readSettings (std::span (full).first (length), settings);
        const auto result = writeSettings (settings);
        // A field that the end cuts in two may be repaired as a whole.
        const auto whole = std::min (fileBytes, std::max (length, size_t { 4 }) + 8);
        ASSERT_TRUE (std::equal (result.begin() + static_cast<std::ptrdiff_t> (whole), result.end(),
                                 defaults.begin() + static_cast<std::ptrdiff_t> (whole)))
            << length;
        const auto texts = std::min (length, size_t { 4 + 0x2c00 });
        if (length >= 4)
            ASSERT_EQ (std::memcmp (result.data(), full.data(), texts), 0) << length;
        else
            ASSERT_EQ (result, defaults);
    }
}

TEST_F (SettingsFile, NumbersOutsideTheirRangeComeBackAsDefaults)
{
    expectRepairs<&EngineSettings::masterVolume, double> ({ { 0.0, 1.0 },
                                                            { 2.0, 1.0 },
                                                            { -0.5, 1.0 },
                                                            { notANumber, 1.0 },
                                                            { infinity, 1.0 },
                                                            { subnormal, 1.0 },
                                                            { 1.0, 1.0 },
                                                            { 0.001, 0.001 } });
    expectRepairs<&EngineSettings::monitorVolume, double> ({ { 100.0, 1.0 }, { -1.0, 1.0 }, { 0.0, 0.0 } });
    expectRepairs<&EngineSettings::crossfader, double> ({ { 1.5, 0.5 }, { 1.0, 1.0 } });
    expectRepairs<&DeckSetup::lineGain, double> ({ { -0.01, 1.0 },
                                                   { 0.0, 0.0 },
                                                   { 4.0, 4.0 },
                                                   { 4.01, 1.0 },
                                                   { notANumber, 1.0 },
                                                   { -infinity, 1.0 } });
    expectRepairs<&DeckSetup::timecodeCalibration, double> (
        { { -0.01, 1.0 }, { 4.0, 4.0 }, { notANumber, 1.0 } });
    expectRepairs<&DeckSetup::timecodeThreshold, float> (
        { { -0.1f, 0.32f }, { 0.0f, 0.0f }, { 1.0f, 1.0f }, { 1.1f, 0.32f } });
    expectRepairs<&DeckSetup::timecodeType, int8_t> ({ { -1, 0 }, { 17, 17 }, { 18, 0 } });
    expectRepairs<&DeckSetup::inputPair, int8_t> ({ { -1, 2 }, { 0, 0 }, { 3, 3 }, { 4, 2 }, { 127, 2 } });
    expectRepairs<&EngineSettings::masterDeck, int8_t> (
        { { 9, 9 } }); // which the engine takes as no master at all
}

TEST_F (SettingsFile, WhateverAFileHoldsTheAudioNumbersAreUsable)
{
    std::mt19937 random (3);
    const double bad[] = { notANumber, -notANumber, infinity, -infinity, subnormal, -subnormal, 1e308, 0.25 };
    for (uint32_t round = 0; round < 2000; ++round)
    {
        auto bytes = randomFile (round);
        for (size_t at = 4 + 0x2c00; at + 8 <= fileBytes; at += 8)
            if (random() % 2 == 0)
                std::memcpy (&bytes[at], &bad[random() % std::size (bad)], 8);
        readSettings (bytes, settings);

        std::vector<double> numbers { settings.masterVolume, settings.crossfader, settings.crossfaderCurve,
                                      settings.monitorMix, settings.monitorVolume };
        numbers.insert (numbers.end(), settings.samplerLevels.begin(), settings.samplerLevels.end());
        for (const auto part : numbers)
            ASSERT_TRUE (part >= 0.0 && part <= 1.0) << part << " in round " << round;
        for (const auto& deck : settings.deckSetup)
        {
            numbers.insert (numbers.end(),
                            { deck.timecodeCalibration, deck.lineGain, deck.timecodeThreshold });
            ASSERT_TRUE (std::isnormal (deck.timecodeLeadIn.get()) || deck.timecodeLeadIn == 0.0f);
            ASSERT_TRUE (deck.inputPair >= 0 && deck.inputPair < 4);
        }
        for (const auto number : numbers)
            ASSERT_TRUE (std::isnormal (number) || number == 0.0) << number << " in round " << round;

        const auto once = writeSettings (settings);
        EngineSettings again;
        readSettings (once, again);
        ASSERT_EQ (writeSettings (again), once) << "a repaired file must be at rest";
        ASSERT_GE (settings.recordFile.get().length(), 0);
    }
}

TEST_F (SettingsFile, AnUnwritableFolderKeepsTheOldFile)
{
    EXPECT_FALSE (saveSettings (settings, juce::File ("/proc/platterdex/setup")));

    root.file ("blocked").create();
    EXPECT_FALSE (saveSettings (settings, root.file ("blocked/setup")));
    EXPECT_TRUE (loadSettings (settings, root.file ("blocked/setup"), folders));
}

#include "settings/SettingsFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace
{
using Bytes = std::string;

Bytes textField (const juce::String& text)
{
    auto bytes = text.toStdString();
    bytes.resize (1024);
    return bytes;
}

template <typename T>
Bytes raw (T value)
{
    Bytes bytes (sizeof value, '\0');
    std::memcpy (bytes.data(), &value, sizeof value);
    return bytes;
}

Bytes byte (int value)
{
    return Bytes (1, static_cast<char> (value));
}

Bytes list (std::initializer_list<int> values)
{
    Bytes bytes;
    for (const auto value : values)
        bytes += static_cast<char> (value);
    return bytes;
}

Bytes repeated (const Bytes& bytes, int times)
{
    Bytes all;
    while (--times >= 0)
        all += bytes;
    return all;
}

struct Row
{
    size_t offset;
    size_t width;
    Bytes expected;
};

const Folders folders { juce::File ("/opt/dj"), juce::File ("/nowhere/music") };

const std::vector<Row> blockRows {
    { 0x0000, 1024, textField ("/opt/dj/audio") },
    { 0x0400, 1024, textField ("/opt/dj/samples") },
    { 0x0800, 1024, textField ("/opt/dj/midi_files") },
    { 0x0c00, 1024, textField ("/opt/dj/vst_plugins") },
    { 0x1000, 1024, textField ("/opt/dj/playlists") },
    { 0x1400, 1024, textField ("Enter Search Keyword...") },
    { 0x1800, 1024, textField ("/opt/dj/disk_recorder/record.wav") },
    { 0x1c00, 1024, textField ("/opt/dj/slicegate_files") },
    { 0x2000, 1024, textField ("/opt/dj/smartknob_files") },
    { 0x2400, 1024, textField ("/opt/dj/iTunes Music Library.xml") },
    { 0x2800, 1024, textField ("/opt/dj/control_cd/control_cd.wav") },
    { 0x2c00, 8, raw (1.0) },
    { 0x2c08, 8, byte (0) },
    { 0x2c10, 8, raw (0.5) },
    { 0x2c18, 8, raw (0.5) },
    { 0x2c20, 8, raw (0.0) },
    { 0x2c28, 8, raw (1.0) },
    { 0x2c30, 1, byte (15) },
    { 0x2c31, 1, byte (1) },
    { 0x2c32, 5, byte (0) },
    { 0x2c37, 1, byte (2) },
    { 0x2c38, 4, byte (0) },
    { 0x2c3c, 21, list ({ 0, 0, 0, 0, 0, 7, 0, 0, 1, 16, 0, 1, 0, 1, 1, 0, 0, 1, 1, 1, 1 }) },
    { 0x2c51, 2, byte (0) },
    { 0x2c53, 1, byte (7) },
    { 0x2c54, 12, byte (0) },
    { 0x2c60, 136, repeated (raw (1.0), 17) },
    { 0x2ce8, 32, byte (0) },
};

std::vector<Row> deckRows (int deck)
{
    return {
        { 0, 8, byte (0) },
        { 8, 8, raw (1.0) },
        { 16, 8, raw (1.0) },
        { 24, 4, raw (0.32f) },
        { 28, 4, raw (2.0f) },
        { 32, 3, byte (0) },
        { 35, 1, byte (deck) },
        { 36, 2, byte (0) },
        { 38, 1, byte (1) },
        { 39, 1, byte (deck % 2) },
        { 40, 8, list ({ 0, 7, 7, 7, 6, 7, 7, 7 }) },
        { 48, 8, byte (0) },
    };
}

/** The whole file as the tables say, byte for byte; what they leave out is not zero. */
Bytes expectedFile()
{
    Bytes block (11752, '\xee');
    const auto place = [&] (const std::vector<Row>& rows, size_t start)
    {
        for (const auto& [offset, width, expected] : rows)
        {
            block.replace (start + offset, width, width, '\0');
            block.replace (start + offset, expected.size(), expected);
        }
    };
    place (blockRows, 0);
    for (int deck = 0; deck < 4; ++deck)
        place (deckRows (deck), 0x2d08 + static_cast<size_t> (deck) * 56);
    return raw (int32_t { 2250 }) + block;
}
}

TEST (SettingsLayout, DefaultsAreTheDocumentedFileByteForByte)
{
    const auto expected = expectedFile();
    const auto written = writeSettings (defaultSettings (folders));
    ASSERT_EQ (written.size(), expected.size());
    for (size_t i = 0; i < written.size(); ++i)
        ASSERT_EQ (std::to_integer<int> (written[i]), static_cast<unsigned char> (expected[i]))
            << "offset " << std::hex << i - 4 << " of the block";
}

TEST (SettingsLayout, NamesReachTheDocumentedBytes)
{
    EngineSettings settings = defaultSettings (folders);
    const auto plain = writeSettings (settings);
    const auto changedAt = [&] (auto& field, auto value)
    {
        const auto before = field;
        field = value;
        const auto written = writeSettings (settings);
        field = before;
        const auto [at, ignored] = std::mismatch (written.begin(), written.end(), plain.begin());
        return static_cast<size_t> (at - written.begin()) - 4;
    };
    using enum EditorPreference;
    for (const auto& [which, offset] : { std::pair { spectralWaveform, 0x2c44 },
                                         { listFontSize, 0x2c45 },
                                         { showTooltips, 0x2c47 },
                                         { showCoverArt, 0x2c49 },
                                         { showItunes, 0x2c4a },
                                         { fourDeckMode, 0x2c4b },
                                         { deckPanelsLeft, 0x2c4d },
                                         { deckPanelsRight, 0x2c4e },
                                         { showGhostMixer, 0x2c4f },
                                         { mixerOrderABCD, 0x2c50 } })
        EXPECT_EQ (changedAt (settings.editor[which], 21), static_cast<size_t> (offset));
    EXPECT_EQ (changedAt (settings.samplerLevels[16], 0.25),
               0x2ce0u + 6u); // 1 and 0.25 differ from their 7th byte on
    EXPECT_EQ (changedAt (settings.deckSetup[3].vstOnMaster, 1), 0x2d08u + 3 * 56 + 48);
}

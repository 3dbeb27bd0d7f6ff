#include "ui/layout/EditorLayout.h"
#include "ui/layout/DeckLayout.h"

#include <gtest/gtest.h>

using Area = juce::Rectangle<int>;

TEST (EditorLayout, PartsKeepWithinTheWindowAndApart)
{
    for (const auto fourDecks : { false, true })
        for (const auto ghostMixer : { false, true })
            for (const auto& [width, height] : { std::pair { 1024, fourDecks ? 728 : 468 }, { 1921, 1080 } })
            {
                SCOPED_TRACE (testing::Message() << width << (fourDecks ? " four" : " two") << ghostMixer);
                const EditorLayout layout (width, height, { fourDecks, ghostMixer });
                EXPECT_EQ (layout.decks[2].isEmpty(), !fourDecks);
                EXPECT_EQ (layout.ghostMixer.isEmpty(), !ghostMixer);
                EXPECT_EQ (layout.decks[0].getWidth(), (width - 230) / 2);
                EXPECT_EQ (layout.global.getWidth(), EditorLayout::globalWidth);
                EXPECT_EQ (layout.browser.getBottom(), height);

                std::vector<Area> parts { layout.browser, layout.ghostMixer };
                parts.insert (parts.end(), layout.decks.begin(), layout.decks.end());
                for (const auto& part : parts)
                {
                    EXPECT_TRUE (part.isEmpty() || Area (width, height).contains (part)) << part.toString();
                    EXPECT_FALSE (part.intersects (layout.header)) << part.toString();
                    for (const auto& other : parts)
                        EXPECT_TRUE (part == other || !part.intersects (other)) << part.toString();
                }
                for (const auto& deck : layout.decks)
                    EXPECT_FALSE (deck.intersects (layout.global));
            }
}

TEST (DeckLayout, PartsTileTheStripAndPanelsGiveWayToTheWaveform)
{
    for (const auto width : { 397, 525, 845, 1165 })
        for (int left = 0; left <= 4; ++left)
            for (int right = 0; right <= 4; ++right)
            {
                SCOPED_TRACE (width * 100 + left * 10 + right);
                const DeckLayout layout (width, EditorLayout::deckHeight, left, right);
                EXPECT_EQ (layout.transport, Area (0, 0, 49, 190));
                EXPECT_GE (layout.waveform.getWidth(), DeckLayout::leastWaveform);
                EXPECT_LE (layout.leftPanels.size(), static_cast<size_t> (left));
                EXPECT_LE (layout.rightPanels.size(), static_cast<size_t> (right));
                const auto panels = layout.leftPanels.size() + layout.rightPanels.size();
                EXPECT_TRUE (left > 1 || right > 1 || panels == static_cast<size_t> (left + right));

                std::vector<Area> upper { layout.transport, layout.waveform };
                upper.insert (upper.end(), layout.leftPanels.begin(), layout.leftPanels.end());
                upper.insert (upper.end(), layout.rightPanels.begin(), layout.rightPanels.end());
                int covered = 0;
                for (const auto& part : upper)
                {
                    EXPECT_EQ (part.getHeight(), DeckLayout::upperHeight);
                    covered += part.getWidth();
                    for (const auto& other : upper)
                        EXPECT_TRUE (part == other || !part.intersects (other));
                }
                EXPECT_EQ (covered, width);
                for (const auto& part : { layout.thumbnail, layout.title, layout.tempo })
                    EXPECT_TRUE (Area (width, EditorLayout::deckHeight).contains (part) && !part.isEmpty());
                EXPECT_FALSE (layout.thumbnail.intersects (layout.title)
                              || layout.title.intersects (layout.tempo));
            }
}

TEST (EditorLayout, WavesTakeOnlyWhatTheRestDoesNotNeed)
{
    struct Case
    {
        int height;
        bool four, browser;
        int waves; ///< rows
    };
    const Case cases[] { { 800, false, true, 240 },  { 640, false, true, 0 },    { 670, false, true, 133 },
                         { 800, true, true, 0 },     { 1080, true, true, 302 },  { 1440, true, true, 320 },
                         { 468, false, false, 131 }, { 577, false, false, 240 }, { 728, true, false, 0 },
                         { 898, true, false, 320 } };
    for (const auto& [height, four, browser, waves] : cases)
    {
        SCOPED_TRACE (testing::Message() << height << (four ? " four" : " two") << browser);
        const EditorLayout plain (1280, height, { four, true, false, browser });
        const EditorLayout layout (1280, height, { four, true, true, browser });
        EXPECT_EQ (layout.waves.getHeight(), waves);
        EXPECT_EQ (layout.header, plain.header.translated (0, waves));
        EXPECT_EQ (layout.global, plain.global.translated (0, waves));
        EXPECT_EQ (layout.ghostMixer, plain.ghostMixer.translated (0, waves));
        for (size_t deck = 0; deck < layout.decks.size(); ++deck)
            EXPECT_EQ (layout.decks[deck],
                       plain.decks[deck].isEmpty() ? Area() : plain.decks[deck].translated (0, waves));
        EXPECT_EQ (layout.browser.getY(), plain.browser.getY() + waves);
        EXPECT_EQ (layout.browser.getBottom(), height);
        EXPECT_EQ (EditorLayout (1280, EditorLayout::heightWithWaves (four), { four, true, true, false })
                       .waves.getHeight(),
                   four ? 320 : 240);
    }
}

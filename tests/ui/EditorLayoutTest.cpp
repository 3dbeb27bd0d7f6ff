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

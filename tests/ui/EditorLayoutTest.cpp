#include "ui/layout/EditorLayout.h"
#include "ui/layout/DeckLayout.h"

#include <gtest/gtest.h>

using Area = juce::Rectangle<int>;

TEST (EditorLayout, StandsWhereItIsWrittenInEveryMode)
{
    struct Case
    {
        int width, height;
        EditorLayout::Mode mode;
        Area header, deckA, deckB, deckC, deckD, global, ghost, browser, resizer;
    };
    const Area none;
    const Case cases[] {
        { 1024,
          296,
          { false, false },
          { 5, 5, 1014, 48 },
          { 5, 55, 397, 239 },
          { 622, 55, 397, 239 },
          none,
          none,
          { 404, 22, 216, 275 },
          none,
          { 0, 306, 1024, 0 },
          { 1008, 280, 16, 16 } },
        { 1024,
          728,
          { true, true },
          { 5, 5, 1014, 48 },
          { 5, 55, 397, 239 },
          { 622, 55, 397, 239 },
          { 5, 296, 397, 239 },
          { 622, 296, 397, 239 },
          { 404, 22, 216, 516 },
          { 0, 535, 1024, 43 },
          { 0, 578, 1024, 150 },
          { 1008, 712, 16, 16 } },
        { 1280,
          800,
          { false, true },
          { 5, 5, 1270, 48 },
          { 5, 55, 525, 239 },
          { 750, 55, 525, 239 },
          none,
          none,
          { 532, 22, 216, 275 },
          { 0, 294, 1280, 43 },
          { 0, 337, 1280, 463 },
          { 1264, 784, 16, 16 } },
        { 1921,
          1080,
          { true, false },
          { 5, 5, 1911, 48 },
          { 5, 55, 845, 239 },
          { 1070, 55, 845, 239 },
          { 5, 296, 845, 239 },
          { 1070, 296, 845, 239 },
          { 852, 22, 216, 516 },
          none,
          { 0, 547, 1921, 533 },
          { 1905, 1064, 16, 16 } },
        { 2560,
          1440,
          { true, false },
          { 5, 5, 2550, 48 },
          { 5, 55, 1165, 239 },
          { 1390, 55, 1165, 239 },
          { 5, 296, 1165, 239 },
          { 1390, 296, 1165, 239 },
          { 1172, 22, 216, 516 },
          none,
          { 0, 547, 2560, 893 },
          { 2544, 1424, 16, 16 } },
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.width);
        const EditorLayout layout (c.width, c.height, c.mode);
        EXPECT_EQ (layout.header, c.header);
        EXPECT_EQ (layout.decks[0], c.deckA);
        EXPECT_EQ (layout.decks[1], c.deckB);
        EXPECT_EQ (layout.decks[2], c.deckC);
        EXPECT_EQ (layout.decks[3], c.deckD);
        EXPECT_EQ (layout.global, c.global);
        EXPECT_EQ (layout.ghostMixer, c.ghost);
        EXPECT_EQ (layout.browser, c.browser);
        EXPECT_EQ (layout.resizer, c.resizer);
    }
    EXPECT_EQ (EditorLayout::heightWithoutBrowser (true), 728);
    EXPECT_EQ (EditorLayout::heightWithoutBrowser (false), 468);
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

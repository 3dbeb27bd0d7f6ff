#include "ui/layout/EditorLayout.h"

#include <algorithm>

namespace
{
constexpr int margin = 5, headerHeight = 48;
constexpr int upperDecks = 55, lowerDecks = 296;
constexpr int betweenDecks = 220, outsideDecks = 230; // the block in the middle, and all that is no deck
constexpr int globalTop = 22, resizerSize = 16, ghostHeight = 43, ghostPush = 31;

/** The rows that differ between two and four decks. */
struct Rows
{
    int globalHeight, ghostTop, browserTop;
    int leastWaves, mostWaves;
};

constexpr Rows twoDecks { 275, 294, 306, 112, 240 }, fourDecks { 516, 535, 547, 208, 320 };
}

int EditorLayout::heightWithWaves (bool isFour)
{
    const auto& rows = isFour ? fourDecks : twoDecks;
    return rows.browserTop + ghostPush + rows.mostWaves;
}

EditorLayout::EditorLayout (int width, int height, Mode mode)
{
    const auto rows = mode.fourDecks ? fourDecks : twoDecks;
    const auto deck = (width - outsideDecks) / 2;
    const auto right = deck + margin + betweenDecks;

    header = { margin, margin, width - 2 * margin, headerHeight };
    decks[0] = { margin, upperDecks, deck, deckHeight };
    decks[1] = { right, upperDecks, deck, deckHeight };
    if (mode.fourDecks)
    {
        decks[2] = { margin, lowerDecks, deck, deckHeight };
        decks[3] = { right, lowerDecks, deck, deckHeight };
    }
    global = { deck + 7, globalTop, globalWidth, rows.globalHeight };
    if (mode.ghostMixer)
        ghostMixer = { 0, rows.ghostTop, width, ghostHeight };
    const auto top = rows.browserTop + (mode.ghostMixer ? ghostPush : 0);
    browser = { 0, top, width, std::max (0, height - top) };
    if (const auto room = browser.getHeight() - (mode.browser ? leastBrowser : 0);
        mode.waves && room >= rows.leastWaves)
    {
        waves = { 0, 0, width, std::min (room, rows.mostWaves) };
        for (auto* part : { &header, &global, &ghostMixer, &decks[0], &decks[1], &decks[2], &decks[3] })
            if (!part->isEmpty())
                part->translate (0, waves.getHeight());
        browser.setTop (top + waves.getHeight());
    }
    resizer = { width - resizerSize, height - resizerSize, resizerSize, resizerSize };
}

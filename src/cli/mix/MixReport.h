#pragma once

#include "deck/DeckWorld.h"

#include <array>
#include <optional>
#include <vector>

/** Notes the tracks of a mix with their times, and the distance of their beats. Times in seconds. */
class MixReport
{
public:
    struct Row
    {
        juce::String path;
        double start = 0.0, end = 0.0;
        double tempo = 0.0; ///< BPM of the track

        /** Delay of its beats against those of the track before, in ms, block by block while both were heard; none if
            one of them has no grid. The stretcher places attacks, and what lies between them wanders a little. */
        std::vector<double> offsets;
    };

    explicit MixReport (DeckWorld& w) : world (w) {}

    /** Looks at decks A and B after a block. @param seconds   into the mix */
    void look (double seconds);

    const std::vector<Row>& rows() const noexcept { return played; }

    /** Comma-separated, with a line of names. */
    juce::String csv() const;

private:
    void measureOffset();

    DeckWorld& world;
    std::vector<Row> played;
    std::array<std::optional<size_t>, 2> onDeck; ///< the row of what it plays
};

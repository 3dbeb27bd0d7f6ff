#pragma once

#include "deck/DeckWorld.h"

#include <array>
#include <optional>
#include <vector>

/** What was played when in a mix, and how far the beats of two tracks were apart. Times in seconds. */
class MixReport
{
public:
    struct Row
    {
        juce::String path;
        double start = 0.0, end = 0.0;
        double tempo = 0.0; ///< BPM of the track

        /** How late its beats were against those of the track before, in ms, block by block while both were heard; none if
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

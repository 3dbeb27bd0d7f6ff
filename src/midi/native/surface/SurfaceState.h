#pragma once

#include "midi/native/table/FunctionRows.h"
#include "midi/native/table/ModelTable.h"
#include "support/Relaxed.h"

#include <array>

/** The layers and switches of a surface. Written by the thread of messages and by the start, read by that of lamps. */
class SurfaceState
{
public:
    static constexpr size_t decks = 4;

    /** A deck's index, or that of what belongs to no deck. */
    static constexpr int wholeSurface = 4;

    std::array<Relaxed<uint8_t>, decks + 1> shift {}, mode {}; ///< by deck, the last of the whole surface
    std::array<Relaxed<uint8_t>, decks> scratchMode {}, searchMode {};
    std::array<Relaxed<uint8_t>, sideCount> deckOfSide { uint8_t { 0 }, uint8_t { 1 }, uint8_t { 0 } };

    /** The functions that a hand holds, by deck. */
    std::array<std::array<Relaxed<uint8_t>, decks>, functionCount> held {};

    void reset() noexcept { *this = {}; }

    bool isShifted (int deck) const noexcept
    {
        return shift[wholeSurface] != 0 || shift[static_cast<size_t> (deck)] != 0;
    }

    /** True if the rows of a layer hold for a deck now. */
    bool isIn (const Layer& layer, int deck) const noexcept
    {
        return (layer.shift < 0 || (layer.shift != 0) == isShifted (deck))
               && (layer.deckMode < 0 || layer.deckMode == mode[static_cast<size_t> (deck)])
               && (layer.surfaceMode < 0 || layer.surfaceMode == mode[wholeSurface]);
    }

    /** Gives a side the other one of its decks: A and C on the left, B and D on the right, A and B in between. */
    void selectNextDeck (Decks side) noexcept
    {
        if (side == Decks::listed)
            return;
        auto& deck = deckOfSide[static_cast<size_t> (side) - 1];
        deck = static_cast<uint8_t> (side == Decks::chosen ? 1 - (deck & 1) : (deck + 2) % 4);
    }

    /** The deck that the address at a place of a row stands for. @param place   0 to 3 */
    int deckAt (Decks kind, size_t place) const noexcept
    {
        return kind == Decks::listed ? static_cast<int> (place)
                                     : deckOfSide[static_cast<size_t> (kind) - 1].get();
    }
};

#pragma once

#include "engine/CPlatterdex.h"

#include <array>

/** Decides for each track that is about to enter a mix how its tempo meets that of the one on air: within 10 % it follows;
    at about half or double its grid is read at that tempo and it follows; else it plays in its own tempo, and the mix goes on
    from there. One thread drives the engine and this. */
class MixTempo
{
public:
    explicit MixTempo (CPlatterdex& e) : engine (e) {}

    /** Looks at decks A and B, between two blocks. */
    void look();

private:
    void prepare (int entering);

    CPlatterdex& engine;
    std::array<bool, 2> isPrepared {}; ///< for the track that it holds and has not begun
};

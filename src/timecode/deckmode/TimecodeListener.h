#pragma once

#include "support/Worker.h"
#include "timecode/deckmode/InputDiagnosis.h"
#include "timecode/deckmode/ScopeImage.h"
#include "timecode/deckmode/TimecodeDeck.h"

#include <mutex>

/** Looks at the decks' control signals for those who set them up: scope, diagnosis in words, recognition of the medium.

    All of it runs on a thread of its own while somebody asks; nobody's asking costs nothing. */
class TimecodeListener
{
public:
    TimecodeListener (std::array<TimecodeDeck, deckCount>& decks, DeckWorld&);
    ~TimecodeListener();

    struct Picture
    {
        ScopeImage scope;
        InputDiagnosis::Report input;
        int foundBrand =
            -1; ///< index of the medium that was recognised, another than the deck's; -1 for none
    };

    /** Takes in what has come since the last call, soon. Any thread but the audio thread. */
    void listen (int deck);

    /** As of the last listen() that was carried out. Any thread but the audio thread. */
    Picture picture (int deck) const;

    void waitUntilIdle() const { worker.wait(); }

private:
    struct Ear;

    void hear (int deck);
    void recognise (Ear&, const TimecodeDeck&, std::span<const InputTap::Frame>);

    std::array<TimecodeDeck, deckCount>& decks;
    DeckWorld& world;
    std::array<std::unique_ptr<Ear>, deckCount> ears; ///< the worker's
    mutable std::mutex picturesLock;
    std::array<Picture, deckCount> pictures;
    Worker worker { "timecode" };
};

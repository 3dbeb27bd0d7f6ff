#pragma once

#include "ui/poll/DeckWatch.h"

#include <juce_core/juce_core.h>

#include <array>
#include <functional>
#include <optional>
#include <span>

/** Tells which decks hold a song, and whether it was played in this session. Message thread. */
class SongStatus
{
public:
    /** @param wasPlayed   true for the path of a song that a deck has played in this session */
    SongStatus (CPlatterdex&, std::function<bool (const juce::String& path)> wasPlayed);

    std::span<const DeckWatch> decks() const noexcept { return watches; }

    /** Looks at the decks. @returns true if another song lies on one of them, or one has begun or stopped to play */
    bool look();

    struct Sign
    {
        std::array<bool, 4> decks {}; ///< that hold the song
        bool isPlaying = false;       ///< on one of them
        bool wasPlayed = false;

        /** The first of the decks, or nothing. */
        std::optional<int> deck() const;
    };

    Sign of (const juce::String& path) const;

private:
    struct Held
    {
        juce::String path;
        bool isPlaying = false;
        bool operator== (const Held&) const = default;
    };

    const std::array<DeckWatch, 4> watches;
    std::array<Held, 4> held;
    const std::function<bool (const juce::String&)> wasPlayed;
};

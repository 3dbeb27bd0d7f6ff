#pragma once

#include <array>
#include <string_view>

/** The numbers of the commands that a deck's row works with, looked up once by their constants. */
struct DeckCommands
{
    /** @param deck   0 to 3 */
    explicit DeckCommands (int deck);

    static constexpr size_t hotCueButtons = 4;

    int play, cue, sync, keyLock, keyTuning, nudgeMinus, nudgePlus, pitch, pitchReset, seek;
    std::array<int, hotCueButtons> hotCues, deleteHotCues;
};

/** The number of a deck's command. @param family   its constant without the deck's letter, "PLAY_PAUSE_"
    @returns 0 if there is none */
int commandOfDeck (std::string_view family, int deck);

#include "ui/DeckCommands.h"

#include "engine/CommandTable.h"

#include <string>

int commandOfDeck (std::string_view family, int deck)
{
    return CommandTable::numberOf (std::string (family) + static_cast<char> ('A' + deck));
}

DeckCommands::DeckCommands (int deck)
    : play (commandOfDeck ("PLAY_PAUSE_", deck)),
      cue (commandOfDeck ("CUE_STUTTER_", deck)),
      sync (commandOfDeck ("SYNC_LOCK_", deck)),
      keyLock (commandOfDeck ("KEY_LOCK_", deck)),
      keyTuning (commandOfDeck ("KEY_TUNING_", deck)),
      nudgeMinus (commandOfDeck ("PITCH_BEND_NUDGE_MINUS_", deck)),
      nudgePlus (commandOfDeck ("PITCH_BEND_NUDGE_PLUS_", deck)),
      pitch (commandOfDeck ("PITCH_", deck)),
      pitchReset (commandOfDeck ("PITCH_RESET_", deck)),
      seek (commandOfDeck ("SEEK_", deck))
{
    for (size_t slot = 0; slot < hotCueButtons; ++slot)
    {
        const auto number = std::to_string (slot + 1);
        hotCues[slot] = commandOfDeck ("HOT_CUE_" + number + "_", deck);
        deleteHotCues[slot] = commandOfDeck ("DELETE_HOT_CUE_" + number + "_", deck);
    }
}

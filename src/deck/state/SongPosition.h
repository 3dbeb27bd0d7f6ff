#pragma once

#include <optional>

/** The position of a host's song at the begin of a block. */
struct SongPosition
{
    static constexpr double defaultBpm = 120.0;

    double bpm = defaultBpm;
    double timeInSeconds = 0.0;
    std::optional<double>
        beats; ///< counted over all changes of tempo, in quarter notes; not every host tells them
    bool isPlaying = false;
    bool hasRestarted = false; ///< since the last block it began to play, or went on at another place
};

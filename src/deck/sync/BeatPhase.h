#pragma once

#include "deck/voice/LoopRegion.h"
#include "support/AudioThread.h"
#include "tracks/BeatGrid.h"

/** A place in a track as its beats see it. */
struct BeatPhase
{
    double phase = 0.0;  ///< beats since the nearest even beat, -0.5 to 0.5 where the grid is regular
    double length = 0.0; ///< of the beat that holds the place, in frames of the file

    /** @param frame   position in frames of the file
        @returns nothing where the grid has no beat near or no tempo. A beat whose length is more than 6 % off that of
                 the track's tempo is taken for a gap of the table and has the tempo's length. */
    PX_AUDIO_THREAD static std::optional<BeatPhase> at (const BeatGrid&, double frame) noexcept;

    /** The same on a region. A loop that is within 6 % of a number of whole beats has beats of its own: so many, of one
        length, from its start on, so that its turns keep the phase.
        @returns nothing also in any other loop, whose turns leave the beat */
    PX_AUDIO_THREAD static std::optional<BeatPhase> at (const BeatGrid&, const LoopRegion&,
                                                        double frame) noexcept;

    /** The part of a distance in beats that matters to phase, -0.5 to 0.5. */
    static double wrapped (double beats) noexcept;
};

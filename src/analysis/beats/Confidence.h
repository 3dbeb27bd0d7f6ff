#pragma once

/** The signs of a grid that can be trusted. */
struct GridSigns
{
    double tempoFit = 0.0;    ///< Periodicity::Tempo::confidence
    double tempoMargin = 0.0; ///< Periodicity::Tempo::margin
    double phaseMargin = 0.0; ///< BarPhase::margin
    double constancy = 0.0;   ///< steadyShape of the onsets along the grid

    /** The confidence that the beats stand where a hand would put them: 0 to 99. A grid below 50
        should be listened to before it is trusted. */
    int confidence() const;
};

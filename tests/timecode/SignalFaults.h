#pragma once

#include "ControlSignal.h"

/** Faults of needle, cable and card; levels in dB against the carrier's peak, 0 for none. */
struct SignalFaults
{
    const char* name;
    double noiseDb = 0, rumbleDb = 0, humDb = 0, imbalanceDb = 0, crosstalkDb = 0, phaseDegrees = 0;
    double clicksASecond = 0, dropoutsASecond = 0, dc = 0, gainDb = 0, inputRate = 44100;
};

/** The sets of faults of a good deck, a club's and a worn one. */
extern const SignalFaults goodDeck, clubDeck, wornDeck;

/** Sends a signal through faults; the same seed gives the same noise and dust. */
void spoil (ControlSignal&, const SignalFaults&, unsigned seed);

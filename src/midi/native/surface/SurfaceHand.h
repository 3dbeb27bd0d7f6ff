#pragma once

#include "engine/CPlatterdex.h"
#include "midi/native/surface/PitchPickup.h"
#include "midi/native/surface/SurfaceState.h"
#include "midi/native/surface/ValueReader.h"

class MidiControl;

/** The hand that a surface gives to the engine: carries functions out. InMidiThread. */
class SurfaceHand
{
public:
    SurfaceHand (MidiControl& c, const Model& m, SurfaceState& s, std::array<PitchPickup, 4>& p) noexcept;

    /** @param side   of the surface, for the functions that select its deck */
    void act (const Function&, int deck, Decks side, const ControlValue&);

private:
    void command (const Function&, int deck, const ControlValue&);
    void moveValue (int number, int deck, const ControlValue&);
    void movePitch (int number, int deck, const ControlValue&);
    void stepCommand (int number, double steps);
    void change (const Function&, int deck, Decks side);
    void loopOfSize (int deck, int size);
    void rollOfSize (int deck, int size, bool pressed);
    void turnJog (Act, int deck, double steps);
    bool ownsPitch (int deck) const;

    MidiControl& control;
    CPlatterdex& engine;
    const Model& model;
    SurfaceState& state;
    std::array<PitchPickup, 4>& pickups;
};

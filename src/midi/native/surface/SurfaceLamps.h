#pragma once

#include "midi/native/surface/SurfaceState.h"

class MidiControl;

/** States what the lamps, rings and meters of a surface show. OutMidiThread. */
namespace SurfaceLamps
{
/** @param tick    counts 50 ms, for lamps that blink
    @param force   sends also what was sent already */
void state (MidiControl&, const Model&, const SurfaceState&, uint32_t tick, bool force = false);
}

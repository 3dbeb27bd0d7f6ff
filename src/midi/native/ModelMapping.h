#pragma once

#include "midi/mapping/MidiMapping.h"
#include "midi/native/table/ModelTable.h"

/** A model's table as a mapping, for those who want to change it: of each command the first control of the layers that are
    there at the start. What a mapping can't say is left out: layers, lamps, wheels of other forms than centred ones.
    Any thread that may block. */
void fillMapping (const Model&, MidiMapping&);

/** The reason why a control in a model's mapping does not do what it does in the model's driver; null if it does the same.
    @param place     the index of one of the control's addresses
    @param mapping   as fillMapping() has filled it */
const char* mappingLackOf (const Model&, const Control&, size_t place, const MidiMapping& mapping);

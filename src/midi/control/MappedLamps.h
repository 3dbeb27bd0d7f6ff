#pragma once

#include "engine/CPlatterdex.h"
#include "midi/control/MidiSender.h"
#include "midi/mapping/MidiMapping.h"

/** States the lamps of the buttons that a table maps: full while the button's command reads above 0, else dark, and of a fader
    with a ring or motor the place at which the command stands. Of two rows of one control the first is shown. */
class MappedLamps
{
public:
    /** One thread at a time. */
    void state (CPlatterdex&, const MidiMapping&, MidiSender&);

private:
    struct Lamp
    {
        int command = 0;
        int status = 0, data = 0;
        bool isInverted = false; ///< of the control: the highest place is 0
    };

    void findLamps (const MidiMapping&);

    std::vector<Lamp> lamps;
    uint32_t foundFor = ~0u; ///< the table's revision
};

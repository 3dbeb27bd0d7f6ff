#pragma once

#include "ui/panel/ControlPanel.h"
#include "ui/panel/DeckBadge.h"

/** A deck's strip of the mixer: gain, equaliser with its kills, filter, headphones, fader with meter and the side of the
    crossfader. */
class MixerChannel : public ControlPanel
{
public:
    enum class Shape
    {
        tall, ///< everything below each other, for four side by side
        wide  ///< knobs beside the fader, for two
    };

    static constexpr int tallWidth = 54, tallHeight = 446;
    static constexpr int wideWidth = 108, wideHeight = 208;

    /** @param deck   0 to 3 */
    MixerChannel (CPlatterdex&, int deck, Shape);

private:
    DeckBadge badge;
};

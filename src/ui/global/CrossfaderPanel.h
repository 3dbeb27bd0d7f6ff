#pragma once

#include "ui/panel/ControlPanel.h"

/** The crossfader over the whole width of the block, 160 pixels of travel; below it its automatic fades and its curve. */
class CrossfaderPanel : public ControlPanel
{
public:
    static constexpr int height = 44;

    explicit CrossfaderPanel (CPlatterdex&);
};

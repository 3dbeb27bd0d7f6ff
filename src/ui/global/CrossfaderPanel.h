#pragma once

#include "ui/panel/ControlPanel.h"

/** The crossfader with its automatic fades and its curve. */
class CrossfaderPanel : public ControlPanel
{
public:
    static constexpr int height = 44;

    explicit CrossfaderPanel (CPlatterdex&);
};

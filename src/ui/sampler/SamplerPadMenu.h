#pragma once

#include "engine/CPlatterdex.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** Opens the menu of a pad: load, save, rename, clear, how it answers its presses. @param pad   0 to 15. Message thread. */
void openSamplerPadMenu (CPlatterdex&, int pad, juce::Component& owner);

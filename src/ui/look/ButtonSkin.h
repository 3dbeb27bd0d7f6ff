#pragma once

#include "skin/HueColour.h"
#include "ui/look/SkinPicture.h"

/** The hue of a deck. @param deck   is limited to 0 to 3 */
skin::Hue deckHue (int deck) noexcept;

/** The skin's button for a text that fits a height: six frames, to be drawn wide. */
SkinPicture buttonPicture (int height, skin::Hue);

/** The frame of a knob's position in a strip. @param proportion   0 to 1, is limited to that */
int knobFrame (double proportion, int frames) noexcept;

/** The frame of a button's strip of six. Disabled it is the one at rest. */
int buttonFrame (bool isOn, bool over, bool down, bool enabled = true) noexcept;

/** The colour of a text on a disabled button, whose face may be lit all the same. */
juce::Colour textOfDisabled (bool isLit) noexcept;

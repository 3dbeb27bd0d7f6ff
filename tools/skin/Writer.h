#pragma once

#include "skin/SkinTable.h"

#include <juce_graphics/juce_graphics.h>

/** A strip at a scale: its frames one below the other. */
juce::Image drawStrip (const skin::Row&, float scale);

/** Writes the pictures of all scales into a folder, "knob_28@1.25.png", and beside them skin.S, which lays them and the
    font into a program.
    @returns an empty text, or one sentence on what failed */
juce::String writeSkin (const juce::File& folder, const juce::File& font);

/** Paints every strip with its name on one picture. @returns as writeSkin() */
juce::String writeSheet (const juce::File& png, float scale);

/** Writes a picture. @returns false if that failed; an older file then is as it was */
bool writePng (const juce::Image&, const juce::File&);

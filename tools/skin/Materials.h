#pragma once

#include "Light.h"

#include "skin/HueColour.h"

/** Draws one frame of a strip. */
using Painter = void (*) (const Pen&, const skin::Row&, int frame);

/** The function that draws a material. */
Painter painterOf (skin::Material);

/** The face that words and numbers of the pictures are set in. */
void setTypeface (juce::Typeface::Ptr);

/** A word as a shape. @param capHeight   in logical pixels @param tracking   as a part of the font's height */
juce::Path wordPath (const juce::String&, float capHeight, float tracking = 0);

// Knob.cpp
void paintKnob (const Pen&, const skin::Row&, int frame);

// Fader.cpp
void paintTrack (const Pen&, const skin::Row&, int frame);
void paintScale (const Pen&, const skin::Row&, int frame);
void paintCap (const Pen&, const skin::Row&, int frame);

// Button.cpp
/** The body of a button and the colour of what stands on it. */
struct ButtonLook
{
    Surface surface;
    juce::Colour sign;
    juce::Colour ring, innerRing; ///< around it under the pointer; transparent for none
};
ButtonLook lookOf (skin::Hue, int frame);
void paintButton (const Pen&, const skin::Row&, int frame);
void paintSignButton (const Pen&, const skin::Row&, int frame);
void paintTickBox (const Pen&, const skin::Row&, int frame);
void paintWindowButton (const Pen&, const skin::Row&, int frame);
void paintTab (const Pen&, const skin::Row&, int frame);

// Signs.cpp
/** A sign in a square. @param on   for those that look different then */
juce::Path signPath (skin::Sign, juce::Rectangle<float> square, bool on);
void paintSign (const Pen&, const skin::Row&, int frame);

// Meter.cpp
void paintMeter (const Pen&, const skin::Row&, int frame);

// Grounds.cpp
void paintArea (const Pen&, const skin::Row&, int frame);
void paintSunken (const Pen&, const skin::Row&, int frame);
void paintCorner (const Pen&, const skin::Row&, int frame);
void paintScroll (const Pen&, const skin::Row&, int frame);

// Tiles.cpp
void paintDeckStrip (const Pen&, const skin::Row&, int frame);
void paintDeckColumn (const Pen&, const skin::Row&, int frame);
void paintHeader (const Pen&, const skin::Row&, int frame);
void paintGhostMixer (const Pen&, const skin::Row&, int frame);

// Marks.cpp
void paintMark (const Pen&, const skin::Row&, int frame);
void paintBeatLine (const Pen&, const skin::Row&, int frame);
void paintFlag (const Pen&, const skin::Row&, int frame);
void paintFlagLine (const Pen&, const skin::Row&, int frame);
void paintLoopMark (const Pen&, const skin::Row&, int frame);
void paintPlayhead (const Pen&, const skin::Row&, int frame);

// Logo.cpp
void paintLogo (const Pen&, const skin::Row&, int frame);

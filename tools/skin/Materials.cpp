#include "Materials.h"

namespace
{
using skin::Material;

juce::Typeface::Ptr face;

struct Entry
{
    Material material;
    Painter painter;
};

constexpr Entry painters[] {
    { Material::knob, paintKnob },
    { Material::centredKnob, paintKnob },
    { Material::uprightTrack, paintTrack },
    { Material::levelTrack, paintTrack },
    { Material::uprightScale, paintScale },
    { Material::levelScale, paintScale },
    { Material::uprightCap, paintCap },
    { Material::levelCap, paintCap },
    { Material::button, paintButton },
    { Material::signButton, paintSignButton },
    { Material::sign, paintSign },
    { Material::tickBox, paintTickBox },
    { Material::levelMeter, paintMeter },
    { Material::uprightMeter, paintMeter },
    { Material::area, paintArea },
    { Material::sunken, paintSunken },
    { Material::deckStrip, paintDeckStrip },
    { Material::deckColumn, paintDeckColumn },
    { Material::headerTile, paintHeader },
    { Material::ghostTile, paintGhostMixer },
    { Material::tab, paintTab },
    { Material::barMark, paintMark },
    { Material::beatMark, paintMark },
    { Material::beatLine, paintBeatLine },
    { Material::cueFlag, paintFlag },
    { Material::deckFlag, paintFlag },
    { Material::cueLine, paintFlagLine },
    { Material::deckLine, paintFlagLine },
    { Material::loopLine, paintFlagLine },
    { Material::loopIn, paintLoopMark },
    { Material::loopOut, paintLoopMark },
    { Material::playhead, paintPlayhead },
    { Material::windowButton, paintWindowButton },
    { Material::corner, paintCorner },
    { Material::scrollUpright, paintScroll },
    { Material::scrollLevel, paintScroll },
    { Material::logo, paintLogo },
};
}

Painter painterOf (Material material)
{
    for (const auto& entry : painters)
        if (entry.material == material)
            return entry.painter;
    jassertfalse;
    return nullptr;
}

void setTypeface (juce::Typeface::Ptr typeface)
{
    face = std::move (typeface);
}

juce::Path wordPath (const juce::String& word, float capHeight, float tracking)
{
    juce::Path path;
    juce::GlyphArrangement glyphs;
    glyphs.addLineOfText (juce::Font (face).withHeight (100.0f).withExtraKerningFactor (tracking), word, 0,
                          0);
    glyphs.createPath (path);
    juce::Path capital;
    juce::GlyphArrangement one;
    one.addLineOfText (juce::Font (face).withHeight (100.0f), "E", 0, 0);
    one.createPath (capital);
    path.applyTransform (juce::AffineTransform::scale (capHeight / capital.getBounds().getHeight()));
    return path;
}

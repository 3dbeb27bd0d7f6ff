#pragma once

#include "ui/look/SMLookAndFeel.h"
#include "ui/look/SkinPicture.h"

#include <vector>

/** The dark look as the default, for as long as it lives. */
class DarkLook
{
public:
    DarkLook() { juce::LookAndFeel::setDefaultLookAndFeel (&look); }
    ~DarkLook() { juce::LookAndFeel::setDefaultLookAndFeel (nullptr); }

    SMLookAndFeel look;
};

/** Counts how often, and where, a component asks to be painted. */
class RepaintCount : public juce::CachedComponentImage
{
public:
    /** Is told for as long as the component lives. */
    static RepaintCount& of (juce::Component&);

    void paint (juce::Graphics&) override {}
    bool invalidateAll() override;
    bool invalidate (const juce::Rectangle<int>& area) override;
    void releaseResources() override {}

    /** The count since it was asked last. */
    int take();

    juce::Rectangle<int> lastArea;

private:
    explicit RepaintCount (juce::Component& c) : component (c) {}

    juce::Component& component;
    int count = 0;
};

/** Equal cells of plain colours, one below the other. */
juce::Image colourStrip (const std::vector<juce::Colour>&, int width, int height);

/** A component painted at a scale. */
juce::Image paintedAt (juce::Component&, float scale);

juce::Colour centreOf (juce::Component&);

/** A mouse event of a press at one place that is now at another. */
juce::MouseEvent mouse (juce::Component&, juce::Point<float> now, juce::Point<float> pressedAt,
                        juce::ModifierKeys = juce::ModifierKeys::leftButtonModifier, int clicks = 1);

/** Presses in one place, moves to another and lets go. */
void drag (juce::Component&, juce::Point<float> from, juce::Point<float> to,
           juce::ModifierKeys = juce::ModifierKeys::leftButtonModifier);

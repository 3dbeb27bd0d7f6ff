#pragma once

#include "ui/envelope/CurveEditorPane.h"

class CPlatterdex;

/** The editor of a SmartKnob: its twenty curves over the knob's way. */
class SmartKnobEditorComponent : public CurveEditorPane
{
public:
    /** @param deck   0 to 3
        @param knob   0 or 1 */
    SmartKnobEditorComponent (CPlatterdex&, int deck, int knob);

    /** "Deck A SmartKnob #1 Editor" */
    static juce::String title (int deck, int knob);

    /** Opens it in a window of its own. @param opener   any part of the editor's window */
    static void open (CPlatterdex&, int deck, int knob, juce::Component& opener);

    static constexpr int width = 880, height = 540;
};

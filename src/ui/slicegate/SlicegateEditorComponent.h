#pragma once

#include "ui/envelope/CurveEditorPane.h"

class CPlatterdex;

/** The editor of a pad: its time and its volume over four beats. */
class SlicegateEditorComponent : public CurveEditorPane
{
public:
    /** @param deck   0 to 3
        @param pad    0 to 7 */
    SlicegateEditorComponent (CPlatterdex&, int deck, int pad);

    /** "Slicegate Editor for pad A.1" */
    static juce::String title (int deck, int pad);

    /** Opens it in a window of its own. @param opener   any part of the editor's window */
    static void open (CPlatterdex&, int deck, int pad, juce::Component& opener);

    static constexpr int width = 760, height = 400;
};

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** The small sign that follows the pointer in a drag: what is dragged, in few words, so that the places where it can be dropped
    stay in sight. Message thread. */
namespace DragImage
{
/** @param source   where the drag begins
    @param x, y     get the sign's place in the source, beside the pointer */
juce::ScaledImage make (const juce::Component& source, const juce::String& text, int& x, int& y);
}

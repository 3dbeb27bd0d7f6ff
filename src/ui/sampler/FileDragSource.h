#pragma once

#include <juce_core/juce_core.h>

/** A view from which files are dragged. Whoever takes drags asks the component where a drag began. */
class FileDragSource
{
public:
    virtual ~FileDragSource() = default;

    /** The files that are on their way, the first one first. Message thread. */
    virtual juce::StringArray draggedFiles() const = 0;
};

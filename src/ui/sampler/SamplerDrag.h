#pragma once

#include "engine/CPlatterdex.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** The drags that end on a pad: files, songs, the loop of the preview, other pads. Message thread. */
namespace SamplerDrag
{
inline constexpr const char *ofWaveform = "SamplerWaveformDragSource", *ofPad = "SamplerPadDragSource";

using Details = juce::DragAndDropTarget::SourceDetails;

/** True for a drag that a pad takes. */
bool isTaken (CPlatterdex&, const Details&, int pad);

/** Puts onto a pad what was dragged there. */
void drop (CPlatterdex&, const Details&, int pad);

/** The same for files from outside; the first audio file counts. */
bool isTaken (const juce::StringArray& files);
void drop (CPlatterdex&, const juce::StringArray& files, int pad);

/** Starts the drag of a slot's sample, with a picture of the view it lies on. */
void start (juce::Component& from, const char* source, int slot);
}

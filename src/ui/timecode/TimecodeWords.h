#pragma once

#include "mixer/LatencyProbe.h"
#include "timecode/deckmode/TimecodeListener.h"

#include <juce_core/juce_core.h>

/** The words in which panel and page speak of a control signal. */
namespace TimecodeWords
{
/** "97 %", or a dash without a signal. */
juce::String quality (const TimecodeDeck::Status&, const InputDiagnosis::Report&);

/** One line: what is wrong, or that all is well. */
juce::String diagnosis (const TimecodeDeck::Status&, const InputDiagnosis::Report&);

/** "found: Serato CD". */
juce::String found (int brand);

/** "11.6 ms" once the input's latency was measured; empty before. */
juce::String latency (const LatencyProbe::Result&, int inputPair);

/** "+1.000 x   1:02.3", dashes for what is not known. */
juce::String motion (const TimecodeDeck::Status&);
}

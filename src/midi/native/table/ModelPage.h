#pragma once

#include "midi/native/table/FunctionRows.h"

#include <juce_core/juce_core.h>

/** The page of a model, in Markdown: its controls, their functions and lamps, made from its table. A model without a table
    says so. Any thread that may block. */
juce::String modelPage (int model);

/** One or two sentences on how a model is served. Any thread */
juce::String modelRemark (int model);

/** "native", "mapping", "names" */
juce::String supportText (int model);

/** "hot cue 1": a function as people call it. Any thread */
juce::String functionText (const Function&);

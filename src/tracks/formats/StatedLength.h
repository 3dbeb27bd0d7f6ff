#pragma once

#include <juce_core/juce_core.h>

/** The playing time that a file's header states, where one does so to the frame, however much of the file is there. Worker
    threads.
    @param tagged   seconds as the tags' reader found them, who believes the headers of FLAC
    @returns seconds; 0 where nothing is stated, or by a recorder that was never closed */
double statedSeconds (const juce::File&, double tagged);

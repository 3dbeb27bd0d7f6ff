#pragma once

#include <juce_core/juce_core.h>

class SongList;

/** A list's count of songs, playing time and size: "2 songs, 7:12, 10.50 MB". Costs nothing. */
juce::String listSummary (const SongList&);

/** The same in English, as it stands in files whoever writes them. */
juce::String listSummaryOfFile (const SongList&);

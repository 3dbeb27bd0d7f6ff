#pragma once

#include <juce_core/juce_core.h>

class SongList;

/** How many songs a list has, how long they play and how large they are: "2 songs, 7:12, 10.50 MB". Costs nothing. */
juce::String listSummary (const SongList&);

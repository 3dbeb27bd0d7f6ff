#pragma once

#include <cstdint>
#include <vector>

class MidiMappingDispatcher;

/** Takes out of messages that wait together those whose place a later one takes: moves of a fader of which only the last value
    matters. All others stay, in their order. */
void coalesce (std::vector<uint32_t>& words, const MidiMappingDispatcher&);

#include "midi/control/MessageCoalescing.h"

#include "midi/control/MidiMessageQueue.h"
#include "midi/mapping/MappingAction.h"

#include <algorithm>
#include <bitset>

void coalesce (std::vector<uint32_t>& words, const MidiMappingDispatcher& dispatcher)
{
    // From the last on: of the controllers on 16 channels a bit is set for those that have been seen.
    std::bitset<16 * 128> seen;
    const auto isReplaced = [&] (uint32_t word)
    {
        const auto status = MidiWord::status (word), data = MidiWord::data (word);
        if ((status & 0xf0) != 0xb0 || data > 127)
            return false;
        const auto control = static_cast<size_t> ((status & 15) * 128 + data);
        if (seen[control])
            return dispatcher.isLastEnough (status, data);
        seen.set (control);
        return false;
    };
    auto kept = words.size();
    for (auto i = words.size(); i-- > 0;)
        if (!isReplaced (words[i]))
            words[--kept] = words[i];
    words.erase (words.begin(), words.begin() + static_cast<std::ptrdiff_t> (kept));
}

#include "cli/mix/MixReport.h"

#include "cli/TerminalOutput.h"
#include "deck/sync/BeatPhase.h"

#include <algorithm>
#include <cmath>

namespace
{
double median (std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t> (values.size() / 2);
    std::nth_element (values.begin(), middle, values.end());
    return *middle;
}
}

void MixReport::look (double seconds)
{
    for (size_t d = 0; d < onDeck.size(); ++d)
    {
        const auto& deck = *world.decks[d];
        const auto plays = deck.play.on != 0;
        if (plays && !onDeck[d])
        {
            onDeck[d] = played.size();
            played.push_back ({ deck.texts().filePath,
                                seconds,
                                seconds,
                                deck.track.numBeats > 0 ? deck.marks.bpm.get() : 0.0,
                                {} });
        }
        if (onDeck[d])
            played[*onDeck[d]].end = seconds;
        if (!plays)
            onDeck[d].reset();
    }
    if (onDeck[0] && onDeck[1])
        measureOffset();
}

void MixReport::measureOffset()
{
    const auto isNewer = *onDeck[0] > *onDeck[1];
    const auto &entering = *world.decks[isNewer ? 0 : 1], &leaving = *world.decks[isNewer ? 1 : 0];
    const auto theirs = BeatPhase::at (leaving.grid(), leaving.heardPosition());
    const auto ours = BeatPhase::at (entering.grid(), entering.heardPosition());
    if (!theirs || !ours || entering.play.elapsedOutput == 0 || leaving.track.numBeats < 1
        || entering.track.numBeats < 1)
        return;
    const auto beatMs = 60000.0 / (leaving.marks.bpm * leaving.tempo.factor);
    const auto offset = BeatPhase::wrapped (theirs->phase - ours->phase) * beatMs;
    played[std::max (*onDeck[0], *onDeck[1])].offsets.push_back (offset);
}

juce::String MixReport::csv() const
{
    juce::String text ("track,start,end,tempo,offset_ms\n");
    for (const auto& row : played)
        text << oneLine (row.path).replace ("\"", "\"\"").quoted() << "," << juce::String (row.start, 3)
             << "," << juce::String (row.end, 3) << ","
             << (row.tempo > 0.0 ? juce::String (row.tempo, 2) : juce::String()) << ","
             << (row.offsets.empty() ? juce::String() : juce::String (median (row.offsets), 3)) << "\n";
    return text;
}

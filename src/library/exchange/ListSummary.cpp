#include "library/exchange/ListSummary.h"

#include "library/database/SongDatabase.h"

juce::String listSummary (const SongList& list)
{
    SongRecord totals;
    totals[SongColumn::duration] = juce::String (list.totalDuration());
    totals[SongColumn::filesize] = juce::String (static_cast<juce::int64> (list.totalSize()));
    return juce::String (list.size()) + (list.size() == 1 ? " song, " : " songs, ")
           + SongDatabase::fieldText (totals, SongField::time) + ", "
           + SongDatabase::fieldText (totals, SongField::filesize);
}

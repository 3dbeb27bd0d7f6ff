#include "library/exchange/ListSummary.h"

#include "library/database/SongDatabase.h"
#include "support/language/Translate.h"

namespace
{
juce::String withTotals (const juce::String& count, const SongList& list)
{
    SongRecord totals;
    totals[SongColumn::duration] = juce::String (list.totalDuration());
    totals[SongColumn::filesize] = juce::String (static_cast<juce::int64> (list.totalSize()));
    return count + ", " + SongDatabase::fieldText (totals, SongField::time) + ", "
           + SongDatabase::fieldText (totals, SongField::filesize);
}
}

juce::String listSummary (const SongList& list)
{
    return withTotals (trPlural ("%1 song", "%1 songs", list.size()), list);
}

juce::String listSummaryOfFile (const SongList& list)
{
    return withTotals (juce::String (list.size()) + (list.size() == 1 ? " song" : " songs"), list);
}

#include "library/query/SongIndex.h"

#include "support/music/KeyName.h"

#include <algorithm>
#include <cmath>
#include <numeric>

// The songs that a query leaves, and their order.

namespace
{
/** Leaves the songs that are in both. An empty mask has all. */
void keepBoth (std::vector<uint8_t>& mask, std::vector<uint8_t> found)
{
    if (mask.empty())
    {
        mask = std::move (found);
        return;
    }
    for (size_t i = 0; i < mask.size(); ++i)
        mask[i] &= found[i];
}

template <typename Values, typename Test>
void keepWhere (const Values& values, std::vector<uint8_t>& mask, Test test)
{
    std::vector<uint8_t> found (values.size());
    for (size_t i = 0; i < values.size(); ++i)
        found[i] = test (values[i]) ? 1 : 0;
    keepBoth (mask, std::move (found));
}

/** The place of each key's name on the circle of fifths; names of one key have the same. */
std::vector<uint32_t> keyRanks (const TextColumn& names)
{
    std::vector<std::pair<std::string, uint32_t>> sorted;
    sorted.reserve (names.size());
    for (uint32_t value = 0; value < names.size(); ++value)
        sorted.emplace_back (KeyName::sortText (names.upper (value)), value);
    std::sort (sorted.begin(), sorted.end());
    std::vector<uint32_t> ranks (sorted.size());
    uint32_t rank = 0;
    for (size_t i = 0; i < sorted.size(); ++i)
    {
        rank += i > 0 && sorted[i].first != sorted[i - 1].first ? 1 : 0;
        ranks[sorted[i].second] = rank;
    }
    return ranks;
}
}

int SongIndex::maskOf (SongDatabase& database, const SongQuery& query, const std::stop_token& stop,
                       Mask& mask) const
{
    const auto terms = QueryTerms::parse (query.search);
    for (const auto& word : terms.words)
    {
        if (stop.stop_requested())
            return LibraryCode::interrupted;
        if (const auto code = keepWord (database, word, query.fields, mask); code != LibraryCode::ok)
            return code;
    }
    for (const auto& range : terms.ranges)
        keepRange (range, mask);
    for (const auto& choice : terms.choices)
        keepChoice (choice, mask);
    if (query.confidenceBelow > 0)
        keepRange ({ SongField::analyzed, 1.0, query.confidenceBelow - 1.0 }, mask);
    if (query.fitBpm > 0.0)
        keepTempo (query.fitBpm, query.fitPercent, mask);
    return stop.stop_requested() ? LibraryCode::interrupted : LibraryCode::ok;
}

void SongIndex::keepHits (const Column& column, const std::vector<uint8_t>& hits, Mask& found) const
{
    if (std::find (hits.begin(), hits.end(), 1) != hits.end())
        for (size_t i = 0; i < found.size(); ++i)
            found[i] |= hits[column.values[i]];
}

int SongIndex::keepWord (SongDatabase& database, const QueryTerms::Word& word,
                         std::span<const SongField> chosen, Mask& mask) const
{
    const auto named = word.field.value_or (SongField::title);
    const auto fields = word.field ? std::span (&named, 1) : chosen;
    Mask found (songs.ids.size());
    std::vector<SongField> elsewhere;
    for (const auto field : fields)
    {
        const auto* const column = columnOf (field);
        if (column == nullptr)
        {
            elsewhere.push_back (field);
            continue;
        }
        std::vector<uint8_t> hits (column->texts.size());
        if (word.hasWildcards())
            column->texts.findPattern (word.folded, hits);
        else
            column->texts.find (word.folded, hits);
        keepHits (*column, hits, found);
    }
    if (!elsewhere.empty())
    {
        SongList others;
        if (const auto code = database.searchLibrary (
                &others, elsewhere, juce::String::fromUTF8 (word.folded.c_str()), SongField::listOrder, true);
            code != LibraryCode::ok)
            return code;
        for (const auto& entry : others.entries())
            if (const auto position = songs.positionOf (entry.songId); position >= 0)
                found[static_cast<size_t> (position)] = 1;
    }
    keepBoth (mask, std::move (found));
    return LibraryCode::ok;
}

void SongIndex::keepRange (const QueryTerms::Range& range, Mask& mask) const
{
    const auto isWithin = [&range] (auto value) { return value >= range.least && value <= range.most; };
    // An open end asks for nothing; an unknown tempo, year or confidence is in no range.
    if (std::isinf (range.least) && std::isinf (range.most))
        return;
    const auto isKnownWithin = [&] (auto value) { return value > 0 && isWithin (value); };
    if (range.field == SongField::bpm)
        keepWhere (songs.bpm, mask, isKnownWithin);
    else if (range.field == SongField::year)
        keepWhere (songs.year, mask, isKnownWithin);
    else if (range.field == SongField::analyzed)
        keepWhere (songs.confidence, mask, isKnownWithin);
    else
        keepWhere (songs.rating, mask, isWithin);
}

void SongIndex::keepChoice (const QueryTerms::Choice& choice, Mask& mask) const
{
    const auto* const column = columnOf (choice.field);
    std::vector<uint8_t> hits (column->texts.size());
    for (const auto& text : choice.folded)
        column->texts.findWhole (text, hits);
    Mask found (songs.ids.size());
    keepHits (*column, hits, found);
    keepBoth (mask, std::move (found));
}

void SongIndex::keepTempo (double bpm, double percent, Mask& mask) const
{
    const auto isNear = [&] (double tempo) { return std::abs (tempo / bpm - 1.0) * 100.0 <= percent; };
    keepWhere (songs.bpm, mask,
               [&] (double tempo) { return isNear (tempo) || isNear (2.0 * tempo) || isNear (0.5 * tempo); });
}

/** Reads a number of all songs. */
int SongIndex::readStored (SongDatabase& database, SongField field, std::vector<double>& values) const
{
    std::vector<double> read (songs.ids.size());
    const auto code = database.scanSongs ({ &field, 1 }, nullptr,
                                          [&] (const SqlRow& row)
                                          {
                                              if (const auto at = songs.positionOf (row.int32 (0)); at >= 0)
                                                  read[static_cast<size_t> (at)] = row.real (3);
                                          });
    if (code == LibraryCode::ok)
        std::swap (values, read);
    return code;
}

/** Reads the stored numbers of some songs without keeping anybody waiting. */
int SongIndex::readStoredOf (SongDatabase& database, const std::vector<int32_t>& songIds,
                             StoredNumbers& numbers) const
{
    {
        const std::shared_lock reading (lock);
        const std::scoped_lock ranking (rankLock);
        for (const auto& [field, values] : songs.stored)
            if (!values.empty())
                numbers[field];
    }
    for (auto& [field, read] : numbers)
        if (const auto code = database.scanSongs ({ &field, 1 }, &songIds,
                                                  [&read] (const SqlRow& row)
                                                  { read.emplace_back (row.int32 (0), row.real (3)); });
            code != LibraryCode::ok)
            return code;
    return LibraryCode::ok;
}

int SongIndex::rankNumbers (SongDatabase& database, SongField field, std::vector<uint32_t>& ranks) const
{
    const auto songCount = songs.ids.size();
    std::vector<std::pair<double, uint32_t>> keys;
    keys.reserve (songCount);
    const auto take = [&keys] (const auto& values)
    {
        for (uint32_t position = 0; position < values.size(); ++position)
            keys.emplace_back (static_cast<double> (values[position]), position);
        return LibraryCode::ok;
    };
    const auto read = [&]
    {
        auto& stored = songs.stored[field];
        if (stored.empty())
            if (const auto code = readStored (database, field, stored); code != LibraryCode::ok)
                return code;
        return take (stored);
    };
    const auto code = field == SongField::bpm        ? take (songs.bpm)
                      : field == SongField::year     ? take (songs.year)
                      : field == SongField::rating   ? take (songs.rating)
                      : field == SongField::time     ? take (songs.durations)
                      : field == SongField::analyzed ? take (songs.confidence)
                                                     : read();
    if (code != LibraryCode::ok)
        return code;
    std::sort (keys.begin(), keys.end());
    ranks.assign (songCount, 0);
    uint32_t rank = 0;
    for (size_t i = 0; i < keys.size(); ++i)
    {
        if (i > 0 && keys[i].first != keys[i - 1].first)
            ++rank;
        ranks[keys[i].second] = rank;
    }
    return LibraryCode::ok;
}

int SongIndex::sortPositions (SongDatabase& database, SongField field, bool ascending,
                              std::vector<uint32_t>& positions) const
{
    if (field == SongField::listOrder)
        return LibraryCode::ok;
    if (!hasColumn (field))
        return LibraryCode::badField;
    const std::scoped_lock ranking (rankLock);
    const auto* const column = field != SongField::year ? columnOf (field) : nullptr;
    auto& ranks = column != nullptr ? column->ranks : songs.ranks[field];
    if (column != nullptr && ranks.size() != column->texts.size())
        ranks = field == SongField::key ? keyRanks (column->texts) : column->texts.ranks (ranks);
    else if (column == nullptr && ranks.empty())
        if (const auto code = rankNumbers (database, field, ranks); code != LibraryCode::ok)
            return code;
    // Counts and places: equal songs keep the order in which they were added, or the reverse of it.
    const auto most = static_cast<uint32_t> (ranks.size());
    const auto keyOf = [&] (uint32_t position)
    { return ranks[column != nullptr ? column->values[position] : position]; };
    if (positions.size() < ranks.size() / 16)
        std::stable_sort (positions.begin(), positions.end(),
                          [&] (uint32_t a, uint32_t b) { return keyOf (a) < keyOf (b); });
    else
    {
        std::vector<uint32_t> places (most + 1);
        for (const auto position : positions)
            ++places[keyOf (position) + 1];
        std::partial_sum (places.begin(), places.end(), places.begin());
        std::vector<uint32_t> sorted (positions.size());
        for (const auto position : positions)
            sorted[places[keyOf (position)]++] = position;
        positions = std::move (sorted);
    }
    if (!ascending)
        std::reverse (positions.begin(), positions.end());
    return LibraryCode::ok;
}

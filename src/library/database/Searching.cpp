#include "library/database/LinkTable.h"
#include "library/database/QueryText.h"
#include "library/database/SongDatabase.h"
#include "library/sql/StoredText.h"

#include <algorithm>
#include <optional>

namespace
{
/** The code of a search that needs no question to the database, or nothing. */
std::optional<int> refusal (SongList* list, SongDatabase::SearchFields fields)
{
    if (list == nullptr)
        return LibraryCode::badArgument;
    if (!std::all_of (fields.begin(), fields.end(), hasColumn))
        return LibraryCode::badField;
    if (!fields.empty())
        return {};
    list->clear();
    return LibraryCode::ok;
}
}

int SongDatabase::searchLibrary (SongList* list, SearchFields fields, const juce::String& term,
                                 SongField sort, bool ascending)
{
    if (const auto refused = refusal (list, fields))
        return *refused;
    return fillSorted (list,
                       " SELECT id,duration,filesize FROM songs WHERE" + QueryText::likeTerms (fields, term),
                       sort, ascending);
}

int SongDatabase::searchLinked (const LinkTable& table, SongList* list, int32_t id, SearchFields fields,
                                const juce::String& term, SongField sort, bool ascending)
{
    if (const auto refused = refusal (list, fields))
        return *refused;
    return fillLinked (table, list, id, " AND (" + QueryText::likeTerms (fields, term) + ")", sort,
                       ascending);
}

int SongDatabase::searchPlaylist (SongList* list, int32_t id, SearchFields fields, const juce::String& term,
                                  SongField sort, bool ascending)
{
    return searchLinked (LinkTables::playlists, list, id, fields, term, sort, ascending);
}

int SongDatabase::searchForeignPlaylist (SongList* list, int32_t id, SearchFields fields,
                                         const juce::String& term, SongField sort, bool ascending)
{
    return searchLinked (LinkTables::foreignPlaylists, list, id, fields, term, sort, ascending);
}

int SongDatabase::searchAutomix (SongList* list, SearchFields fields, const juce::String& term,
                                 SongField sort, bool ascending)
{
    return searchLinked (LinkTables::automix, list, -1, fields, term, sort, ascending);
}

int SongDatabase::searchRecommendation (SongList* list, SearchFields fields, const juce::String& term,
                                        SongField sort, bool ascending)
{
    return searchLinked (LinkTables::recommendation, list, -1, fields, term, sort, ascending);
}

int SongDatabase::searchSmartPlaylist (SongList* list, int32_t id, SearchFields fields,
                                       const juce::String& term, SongField sort, bool ascending)
{
    SongList all (SongListKind::smartPlaylist, id);
    if (const auto code = fillSmartPlaylist (&all, id, SongField::listOrder, true); code != LibraryCode::ok)
    {
        if (list != nullptr)
            list->clear();
        return code;
    }
    return searchAmongIds (list, all.songIds(), fields, term, sort, ascending);
}

int SongDatabase::searchWithinField (SongList* list, SongField field, const juce::String& value,
                                     SearchFields fields, const juce::String& term, SongField sort,
                                     bool ascending)
{
    SongList all;
    if (const auto code = fillByField (value, field, &all, SongField::listOrder, true);
        code != LibraryCode::ok)
        return code;
    return searchAmongIds (list, all.songIds(), fields, term, sort, ascending);
}

int SongDatabase::searchAmongIds (SongList* list, std::span<const int32_t> ids, SearchFields fields,
                                  const juce::String& term, SongField sort, bool ascending)
{
    if (const auto refused = refusal (list, fields))
        return *refused;
    return fillSorted (list,
                       "SELECT DISTINCT id,duration,filesize FROM songs WHERE id in ("
                           + StoredText::joined (ids) + ") and (" + QueryText::likeTerms (fields, term) + ")",
                       sort, ascending);
}

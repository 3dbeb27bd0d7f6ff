#pragma once

#include "library/database/LinkTable.h"
#include "library/songs/SongField.h"

#include <juce_core/juce_core.h>

#include <span>
#include <string>

/** The parts of a query that come from a view: its sort and its search. */
namespace QueryText
{
/** " ORDER BY UPPER(artist) asc" and so on. The list's own order is that of the link rows, or nothing where there are
    none. @param links   null if the list is not stored as links */
std::string sortClause (SongField, bool ascending, const LinkTable* links);

/** " artist LIKE '%x%' OR title LIKE '%x%'". */
std::string likeTerms (std::span<const SongField>, const juce::String& term);

/** A stored condition of a smart playlist, such as " (rating > 3) ORDER BY rating DESC LIMIT 25; ", with a sort put in:
    behind the order that it has, in front of its limit. */
std::string sortedSmartQuery (const std::string& stored, const std::string& sortClause);
}

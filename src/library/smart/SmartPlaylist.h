#pragma once

#include "library/smart/SmartOrder.h"
#include "library/smart/SmartRule.h"

#include <vector>

/** A query as the editor of rules knows it. */
struct SmartPlaylist
{
    std::vector<SmartRule> rules;

    /** True if a song must fit all rules, false if any one is enough. */
    bool matchAll = true;

    /** True if the list holds no more than `limit` songs, which are selected by the order. */
    bool limited = false;

    /** Songs. Kept while not limited; none is 0. */
    int32_t limit = 0;

    /** A column's name, or "RANDOM()". */
    juce::String orderField = randomOrder;
    bool ascending = true;

    bool operator== (const SmartPlaylist&) const = default;
};

/** The query from its condition on, as the database stores and runs it. A rule that is unknown, that its field's type
    does not have or that lacks its number is left out of the outcome. Values are escaped; numbers are checked.
    @returns nothing without rules and limit. Any thread but the audio thread. */
juce::String buildSql (const SmartPlaylist&);

/** The document from which the editor is filled again, in one line. */
juce::String buildXml (const SmartPlaylist&);

/** Reads what buildXml writes. An unknown field or operator gives a broken rule in its place.
    @returns false for another or a malformed document, which leaves the playlist as it is */
bool parseXml (const juce::String& text, SmartPlaylist&);

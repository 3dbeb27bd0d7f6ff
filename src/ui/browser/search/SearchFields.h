#pragma once

#include "library/songs/SongField.h"
#include "support/language/Translate.h"

#include <juce_core/juce_core.h>

#include <array>
#include <vector>

/** The fields that the search field's menu offers. */
namespace SearchFields
{
struct Choice
{
    SongField field;
    const char* text; ///< for the user
};

inline constexpr std::array choices {
    Choice { SongField::title, N_ ("Title") },     Choice { SongField::artist, N_ ("Artist") },
    Choice { SongField::album, N_ ("Album") },     Choice { SongField::genre, N_ ("Genre") },
    Choice { SongField::comment, N_ ("Comment") }, Choice { SongField::grouping, N_ ("Grouping") },
    Choice { SongField::year, N_ ("Year") },       Choice { SongField::filename, N_ ("Filename") },
};

/** The fields that are searched at first. */
inline constexpr const char* byDefault = "title,artist,album,genre,comment";

/** Reads column names with commas between; unknown ones are left out. An empty text is no field at all. */
inline std::vector<SongField> fromText (const juce::String& text)
{
    const auto names = juce::StringArray::fromTokens (text, ",", {});
    std::vector<SongField> fields;
    for (const auto& choice : choices)
        if (names.contains (nameOf (columnOf (choice.field))))
            fields.push_back (choice.field);
    return fields;
}

inline juce::String toText (const std::vector<SongField>& fields)
{
    juce::StringArray names;
    for (const auto field : fields)
        names.add (nameOf (columnOf (field)));
    return names.joinIntoString (",");
}
}

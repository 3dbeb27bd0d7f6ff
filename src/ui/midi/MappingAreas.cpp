#include "ui/midi/MappingAreas.h"

#include "engine/CommandTable.h"
#include "engine/CommandTitle.h"
#include "midi/native/table/ModelList.h"
#include "support/language/Translate.h"

#include <algorithm>

namespace
{
/** The message of a row that has one: "CH 1 - NN 60". */
juce::String messageText (const MidiMappingRow& row)
{
    const auto channel = "CH " + juce::String ((row.status & 15) + 1) + " - ";
    switch (row.status & 0xf0)
    {
    case 0x80:
    case 0x90:
        return channel + "NN " + juce::String (row.data);
    case 0xe0:
        return channel + tr ("Pitch bend")
               + (has (row.features, MidiControlFeature::fine) ? juce::String()
                                                               : " " + juce::String (row.data));
    default:
        return channel + "CC " + juce::String (row.data);
    }
}

enum Area
{
    deckA,
    mixer = 4,
    effects,
    sampler,
    slicegate,
    songManager,
    global
};

struct Range
{
    int first, last;
    int area; ///< deckA stands for the row's own deck
};

constexpr std::array ranges { Range { 1, 212, deckA },       Range { 213, 297, mixer },
                              Range { 298, 353, effects },   Range { 354, 376, sampler },
                              Range { 377, 408, slicegate }, Range { 409, 434, songManager },
                              Range { 435, 436, global },    Range { 437, 456, effects },
                              Range { 457, 464, deckA },     Range { 465, 465, global } };
}

int MappingAreas::areaOf (int row)
{
    for (const auto& range : ranges)
        if (row >= range.first && row <= range.last)
            return range.area == deckA ? CommandTable::find (row).deck : range.area;
    return global;
}

std::vector<int> MappingAreas::rowsOf (int area, const juce::String& search)
{
    const auto words = juce::StringArray::fromTokens (search, true);
    std::vector<int> rows;
    for (int row = 1; row < MidiMapping::rowCount; ++row)
    {
        const auto name = commandTitle (row);
        if ((area < 0 || areaOf (row) == area)
            && std::all_of (words.begin(), words.end(),
                            [&name] (const auto& word) { return name.containsIgnoreCase (word); }))
            rows.push_back (row);
    }
    return rows;
}

juce::String MappingAreas::controlText (const MidiMappingRow& row, int model)
{
    if (!row.isAssigned())
        return {};
    const auto name = ModelList::controlName (model, row.status, row.data);
    return messageText (row)
           + (name.empty() ? juce::String() : " (" + juce::String (std::string (name)) + ")");
}

juce::String MappingAreas::sharedWith (const MidiMapping& mapping, int row)
{
    const auto own = mapping.row (row);
    juce::StringArray others;
    if (own.isAssigned())
        mapping.forEachMatch (own.status, own.data,
                              [&] (int number, const MidiMappingRow&)
                              {
                                  if (number != row)
                                      others.add (commandTitle (number));
                              });
    return others.joinIntoString (", ");
}

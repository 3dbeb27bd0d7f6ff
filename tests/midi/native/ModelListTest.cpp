#include "midi/native/table/ModelList.h"
#include "midi/mapping/MidiMapping.h"
#include "midi/native/ModelMapping.h"
#include "midi/native/table/ModelPage.h"

#include "engine/CommandTable.h"

#include <gtest/gtest.h>

TEST (ModelList, TablesStandAtTheirNumbers)
{
    int tables = 0;
    for (int model = 0; model < ModelList::count; ++model)
        if (const auto* table = ModelList::entry (model).table)
        {
            EXPECT_EQ (table->number, model) << ModelList::entry (model).name;
            ++tables;
        }
    EXPECT_EQ (tables, 32);
    for (const int slow : { 25, 31, 33, 37, 38 })
        EXPECT_EQ (ModelList::entry (slow).pauseMs, 10) << slow;
    EXPECT_EQ (ModelList::controlName (12, 0x90, 1), "key 7");
    EXPECT_EQ (&ModelList::entry (-1), &ModelList::entry (0));
}

TEST (ModelList, PagesSayWhatTheTablesSay)
{
    const juce::File folder (PX_PAGES);
    const auto writes = juce::SystemStats::getEnvironmentVariable ("PX_WRITE_PAGES", {}).isNotEmpty();
    for (int model = 0; model < ModelList::count; ++model)
    {
        const auto page = folder.getChildFile (juce::String (model).paddedLeft ('0', 2) + ".md");
        if (writes)
        {
            ASSERT_TRUE (page.replaceWithText (modelPage (model), false, false, "\n"));
        }
        EXPECT_EQ (page.loadFileAsString(), modelPage (model))
            << "platterdex controllers --pages docs/controllers";
    }
}

TEST (ModelList, ATableIsWrittenOutAsAMapping)
{
    MidiMapping mapping;
    fillMapping (*ModelList::entry (47).table, mapping);
    const auto row = [&] (const char* constant) { return mapping.row (CommandTable::numberOf (constant)); };
    EXPECT_EQ (row ("PLAY_PAUSE_C"), (MidiMappingRow { 0x92, 35 }));
    EXPECT_EQ (row ("CROSSFADER"), (MidiMappingRow { 0xb4, 64 }));
    EXPECT_EQ (row ("PITCH_A").features, MidiControlFeature::fine | MidiControlFeature::takeover);
    EXPECT_EQ (row ("FX_DRY_WET_GROUP_B").type(), MidiControlType::encoder);
    EXPECT_FALSE (row ("FILE_BROWSER_SELECT").isAssigned()) << "it belongs to another layer";
}

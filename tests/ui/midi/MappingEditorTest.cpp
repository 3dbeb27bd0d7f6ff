#include "../../midi/MidiFixture.h"
#include "midi/mapping/MidiMappingFile.h"
#include "shared/ScriptedPrompts.h"
#include "ui/midi/MappingAreas.h"
#include "ui/midi/MidiMappingComponent.h"
#include "ui/midi/MidiPortsPage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

namespace
{
struct EditorFixture : MidiFixture
{
    const juce::ScopedJuceInitialiser_GUI juceScope;

    void press (juce::Component& parent, const juce::String& text)
    {
        for (auto* child : parent.getChildren())
            if (auto* button = dynamic_cast<juce::Button*> (child);
                button != nullptr && button->getButtonText() == text)
                button->onClick();
    }
};
}

TEST (MappingEditor, EveryCommandStandsInOneAreaAndIsFoundByItsName)
{
    size_t total = 0;
    for (int area = 0; area < static_cast<int> (MappingAreas::names.size()); ++area)
        total += MappingAreas::rowsOf (area, {}).size();
    EXPECT_EQ (total, 465u);
    EXPECT_THAT (MappingAreas::rowsOf (9, {}), ElementsAre (435, 436, 465));
    EXPECT_THAT (MappingAreas::rowsOf (2, "hot DELETE 8"), ElementsAre (81 + 28 + 2));
    EXPECT_EQ (MappingAreas::controlText ({ 0x9f, 60 }), "CH 16 - NN 60");
    EXPECT_EQ (MappingAreas::controlText ({ 0xb0, 7 }), "CH 1 - CC 7");
    EXPECT_EQ (MappingAreas::controlText ({}), "");
    EXPECT_EQ (MappingAreas::controlText ({ 0x90, 1 }, 12), "CH 1 - NN 1 (key 7)")
        << "a controller with names only";
}

TEST (MappingEditor, LearnsForgetsShowsConflictsAndKeepsTheTable)
{
    EditorFixture fixture;
    auto& control = fixture.midi->control;
    const auto volume = CommandTable::numberOf ("VOLUME_A"), gain = CommandTable::numberOf ("GAIN_A");
    {
        MidiMappingComponent editor (*fixture.midi);
        editor.setVisible (true);
        editor.filter (4, "a");
        editor.tableView().select (volume);
        fixture.press (editor, "Learn");
        fixture.handle (0xb0, 7, 127);
        EXPECT_EQ (control.mapping.row (volume), (MidiMappingRow { 0xb0, 7 }));
        control.mapping.setRow (gain, { 0xb0, 7, 1 });
        EXPECT_EQ (MappingAreas::sharedWith (control.mapping, volume), "Gain A");
        editor.tableView().select (gain);
        fixture.press (editor, "Forget");
        EXPECT_EQ (control.mapping.row (gain), (MidiMappingRow { 0, 7 }));
        fixture.press (editor, "Learn");
        EXPECT_TRUE (control.isLearning());
    }
    EXPECT_FALSE (control.isLearning());
    MidiMapping kept;
    ASSERT_TRUE (
        loadMidiMapping (fixture.folder.file ("setup").getChildFile ("default_midi_mapping.xml"), kept));
    EXPECT_TRUE (kept.row (volume).isAssigned());
}

TEST (MappingEditor, AskedToClearOrToLoadRubbishItDoesWhatWasAnswered)
{
    EditorFixture fixture;
    const auto answers = std::make_shared<ScriptedPrompts>();
    fixture.midi.reset();
    fixture.prompts = answers;
    fixture.makeEngine();
    fixture.begin();
    auto& mapping = fixture.midi->control.mapping;
    mapping.setRow (1, { 0x90, 1 });
    MidiMappingComponent editor (*fixture.midi);
    fixture.press (editor, "Clear All");
    EXPECT_TRUE (mapping.row (1).isAssigned());
    answers->yes = true;
    fixture.press (editor, "Clear All");
    EXPECT_FALSE (mapping.row (1).isAssigned());
    EXPECT_EQ (answers->asked[1], "Confirm Clear All|Are you sure you want to clear all midi assigns?");
    answers->file = fixture.folder.file ("rubbish.xml");
    answers->file.replaceWithText ("<midiMapping>");
    mapping.setRow (1, { 0x90, 1 });
    fixture.press (editor, "Load");
    EXPECT_TRUE (mapping.row (1).isAssigned());
    EXPECT_TRUE (answers->asked[3].contains ("nothing was changed")) << answers->asked[3];
    answers->file = fixture.folder.file ("mine");
    fixture.press (editor, "Save");
    fixture.press (editor, "Export Script");
    EXPECT_TRUE (fixture.folder.file ("mine.xml").existsAsFile());
    EXPECT_TRUE (fixture.folder.file ("mine.c").existsAsFile());
}

TEST (MappingEditor, PortsComeGoAndStayWanted)
{
    EditorFixture fixture;
    PortListComponent list (fixture.midi->control.ports, MidiDirection::input);
    list.refresh();
    EXPECT_TRUE (list.shownRows().empty());
    const auto pad = fixture.plugAndUse ("Pad");
    list.refresh();
    EXPECT_THAT (list.shownRows(), ElementsAre (MidiPortSet::Row { "Pad", 0, 0, true, true }));
    fixture.cables->pull (pad);
    fixture.look();
    list.refresh();
    EXPECT_THAT (list.shownRows(), ElementsAre (MidiPortSet::Row { "Pad", 0, -1, true, false }));
}

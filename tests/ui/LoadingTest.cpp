#include "UiBench.h"

#include "ui/decks/LoadDialog.h"
#include "ui/decks/TrackLoad.h"

#include <gtest/gtest.h>

namespace
{
juce::File named (const UiBench& bench, const juce::String& name)
{
    const auto file = bench.folder.file (name);
    bench.halfLoudTrack().copyFileTo (file);
    return file;
}

juce::String fileOf (UiBench& bench, int deck)
{
    return juce::File (bench.engine.decks.deck (deck)->texts().filePath).getFileName();
}
}

TEST (Loading, SeveralFilesGoOntoTheDecksInOrderAndPlayingOnesAreLeftAlone)
{
    struct Case
    {
        bool four;
        int first, playing; ///< the deck that plays, or -1
        juce::StringArray files, decks;
        int left;
    };
    const Case cases[] {
        { false, 0, -1, { "1.wav" }, { "1.wav", "" }, 0 },
        { false, 0, -1, { "1.wav", "2.wav" }, { "1.wav", "2.wav" }, 0 },
        { false, 1, -1, { "1.wav", "2.wav" }, { "2.wav", "1.wav" }, 0 },
        { false, 0, -1, { "1.wav", "2.wav", "3.wav" }, { "1.wav", "2.wav" }, 1 },
        { false, 0, 1, { "1.wav", "2.wav", "3.wav" }, { "1.wav", "Half Loud.wav" }, 2 },
        { true, 0, -1, { "1.wav", "2.wav", "3.wav", "4.wav" }, { "1.wav", "2.wav", "3.wav", "4.wav" }, 0 },
        { true, 0, 1, { "1.wav", "2.wav", "3.wav" }, { "1.wav", "Half Loud.wav", "2.wav", "3.wav" }, 0 },
        { true, 2, -1, { "a.txt", "1.wav", "2.wav", "3.wav" }, { "3.wav", "", "1.wav", "2.wav" }, 0 },
    };
    for (const auto& [four, first, playing, files, decks, left] : cases)
    {
        SCOPED_TRACE (files.joinIntoString (" ") + " from " + juce::String (first));
        UiBench bench;
        bench.engine.settings.editor[EditorPreference::fourDeckMode] = four ? 1 : 0;
        if (playing >= 0)
        {
            bench.load (bench.halfLoudTrack(), playing);
            bench.engine.transport.playPause (playing);
        }
        juce::Array<juce::File> tracks;
        for (const auto& name : files)
            tracks.add (named (bench, name));
        auto& dialog = bench.editor->loadDialog();
        auto said = 0;
        dialog.onLeft = [&said] (int count) { said = count; };
        dialog.load (tracks, first, bench.editor->deck (first));
        for (int deck = 0; deck < deckCount; ++deck)
            bench.wait (deck);
        for (int deck = 0; deck < decks.size(); ++deck)
            EXPECT_EQ (fileOf (bench, deck), decks[deck]) << deck;
        EXPECT_EQ (said, left);
    }
}

TEST (Loading, LettersFindTheNextNameRoundTheList)
{
    const juce::StringArray names { "Alpha", "beta.wav", "Bingo.wav", "Copper", "bravo.wav" };
    struct Case
    {
        const char* typed;
        int from, row;
    };
    for (const auto& [typed, from, row] : { Case { "b", 0, 1 },
                                            { "b", 2, 2 },
                                            { "b", 3, 4 },
                                            { "B", 5, 1 },
                                            { "bi", 4, 2 },
                                            { "br", 0, 4 },
                                            { "a", 1, 0 },
                                            { "z", 0, -1 },
                                            { "c", -1, 3 } })
        EXPECT_EQ (FileListKeys::rowOf (names, typed, from), row) << typed << " from " << from;
    EXPECT_EQ (FileListKeys::rowOf ({}, "a", 0), -1);
}

TEST (Loading, TheDialogOpensWhereTheLastTrackWasFoundInALaterSessionToo)
{
    UiBench bench;
    const auto folder = bench.folder.file ("crate");
    ASSERT_TRUE (folder.createDirectory());
    const auto track = folder.getChildFile ("one.wav");
    bench.halfLoudTrack().copyFileTo (track);
    auto& dialog = bench.editor->loadDialog();
    EXPECT_NE (dialog.folder(), folder);
    dialog.chosen ({ track }, 1, &bench.editor->deck (1));
    bench.wait (1);
    EXPECT_EQ (fileOf (bench, 1), "one.wav");
    EXPECT_EQ (dialog.folder(), folder);
    bench.reopen();
    EXPECT_EQ (bench.editor->loadDialog().folder(), folder);
    folder.deleteRecursively();
    EXPECT_NE (bench.editor->loadDialog().folder(), folder) << "a folder that has gone";
}

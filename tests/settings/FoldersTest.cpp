#include "settings/Folders.h"

#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

TEST (Folders, RootHoldsThePluginFileOrItsBundleButNoFolderThatHostsSearch)
{
    const TemporaryFolder home;
    struct Case
    {
        const char* plugin;
        const char* root;
    };
    for (const auto& [plugin, root] : {
             Case { "dj/platterdex.so", "dj" },
             Case { "dj/platterdex", "dj" },
             Case { "dj/Platterdex.lv2/Platterdex.so", "dj" },
             Case { "dj/Platterdex.vst3/Contents/x86_64-linux/Platterdex.so", "dj" },
             Case { ".vst/platterdex.so", "data/Platterdex2" },
             Case { ".lv2/Platterdex.lv2/Platterdex.so", "data/Platterdex2" },
             Case { "lib/VST3/Platterdex.vst3/Contents/x86_64-linux/Platterdex.so", "data/Platterdex2" },
             Case { ".vst3/maker/Platterdex.vst3/Contents/x86_64-linux/Platterdex.so", "data/Platterdex2" },
             Case { "my.vst3.backup/platterdex.so", "my.vst3.backup" },
         })
    {
        home.file (plugin).create();
        EXPECT_EQ (Folders::ofPlugin (home.file (plugin), home.file ("data")).root, home.file (root))
            << plugin;
        EXPECT_EQ (
            home.file (root).getNumberOfChildFiles (juce::File::findFilesAndDirectories, ".platterdex*"), 0)
            << "the trial file stayed";
    }
}

TEST (Folders, RootFallsBackToTheUsersDataWhereNothingCanBeWritten)
{
    const TemporaryFolder home;
    home.file ("file").create();
    for (const auto& plugin :
         { juce::File ("/proc/platterdex.so"), juce::File ("/proc/Platterdex.lv2/Platterdex.so"),
           home.file ("gone/platterdex.so"), home.file ("file/platterdex.so"), juce::File() })
        EXPECT_EQ (Folders::ofPlugin (plugin, home).root, home.file ("Platterdex2"))
            << plugin.getFullPathName();
}

TEST (Folders, CreateAllMakesEveryFolderAndIsHarmlessTwice)
{
    const TemporaryFolder home;
    const Folders folders { home.file ("new/root") };
    EXPECT_TRUE (folders.createAll());
    EXPECT_TRUE (folders.createAll());
    juce::StringArray names;
    for (const auto& folder : folders.root.findChildFiles (juce::File::findFilesAndDirectories, false))
        names.add (folder.getFileName());
    names.sort (false);
    EXPECT_EQ (names.joinIntoString (" "),
               "audio beatmarks control_cd disk_recorder languages midi_files playlists "
               "samples script_files setup slicegate_files smartknob_files vst_plugins");
}

TEST (Folders, CreateAllSaysWhenItCannot)
{
    const TemporaryFolder home;
    home.file ("setup").create();
    EXPECT_FALSE (Folders { home }.createAll());
    EXPECT_TRUE (Folders { home }.controlCd().isDirectory()) << "one failure must not cost the other folders";
    EXPECT_FALSE (Folders { juce::File ("/proc/platterdex") }.createAll());
}

TEST (Folders, ItunesLibraryLiesInTheMusicFolderIfThereIsOne)
{
    const TemporaryFolder home;
    Folders folders { home.file ("root"), home };
    EXPECT_EQ (folders.itunesLibrary(), home.file ("iTunes/iTunes Music Library.xml"));
    folders.music = home.file ("none");
    EXPECT_EQ (folders.itunesLibrary(), home.file ("root/iTunes Music Library.xml"));
}

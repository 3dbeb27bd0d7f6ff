#include "session/Session.h"

#include "shared/ScriptedPrompts.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace
{
Session::Options optionsFor (const juce::File& root, std::shared_ptr<Prompts> prompts = {})
{
    Session::Options options;
    options.folders.root = root;
    options.library.folder = root.getChildFile ("SongManager");
    options.prompts = std::move (prompts);
    return options;
}
}

TEST (Session, IsOneForAllWhoShareItAndNewAfterTheLast)
{
    const TemporaryFolder folder;
    auto made = 0;
    const auto make = [&]
    {
        ++made;
        return optionsFor (folder);
    };
    auto first = Session::shared (make);
    auto second = Session::shared (make);
    EXPECT_EQ (first, second);
    first.reset();
    EXPECT_EQ (Session::shared (make), second);
    EXPECT_EQ (made, 1);
    second.reset();
    EXPECT_NE (Session::shared (make), nullptr);
    EXPECT_EQ (made, 2);
}

TEST (Session, ASecondProgramOnTheRootIsToldAndKeepsNoSettings)
{
    const TemporaryFolder folder;
    const auto prompts = std::make_shared<ScriptedPrompts>();
    // A lock belongs to an opened file, so that two sessions of one process stand for two programs.
    auto first = std::make_shared<Session> (optionsFor (folder));
    auto second = std::make_shared<Session> (optionsFor (folder, prompts));
    const auto world = first->world(), worldOfSecond = second->world();
    EXPECT_TRUE (world.mayKeepSettings());
    EXPECT_FALSE (worldOfSecond.mayKeepSettings());
    EXPECT_FALSE (worldOfSecond.mayKeepSettings());
    ASSERT_EQ (prompts->asked.size(), 1) << "said once";
    EXPECT_TRUE (prompts->asked[0].contains (folder.file ("").getFullPathName())) << prompts->asked[0];
}

TEST (Session, SaysOnceThatALibraryCannotBeOpened)
{
    const TemporaryFolder folder;
    const auto prompts = std::make_shared<ScriptedPrompts>();
    Session session (optionsFor (folder, prompts));
    EXPECT_EQ (session.library(), nullptr) << "there is none";
    EXPECT_TRUE (prompts->asked.isEmpty()) << "which is no fault";

    folder.file ("SongManager/px_music_library.sqlite").createDirectory();
    EXPECT_EQ (session.library(), nullptr);
    EXPECT_EQ (session.library(), nullptr);
    EXPECT_EQ (prompts->asked.size(), 1);
}

TEST (PreferencesFile, KeepWhatOthersWroteAndSurviveAnyLine)
{
    const TemporaryFolder folder;
    const auto file = folder.file ("setup/preferences.txt");
    file.create();
    file.replaceWithText ("later program=a=b\nno value\n=\nsize=150\r\n");
    PreferencesFile preferences (file);
    EXPECT_EQ (preferences.get ("size"), "150");
    EXPECT_EQ (preferences.get ("none", "default"), "default");
    EXPECT_TRUE (preferences.set ("size", "200"));
    const PreferencesFile again (file);
    EXPECT_EQ (again.get ("size"), "200");
    EXPECT_EQ (again.get ("later program"), "a=b");

    PreferencesFile blocked (file.getChildFile ("below a file"));
    EXPECT_FALSE (blocked.set ("size", "200"));
    EXPECT_EQ (blocked.get ("size"), "200");
}

#include "session/Session.h"

#include "shared/ScriptedPrompts.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>

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

TEST (Session, ShowsTheLibraryWhereNothingCanBeStored)
{
    const TemporaryFolder folder;
    const auto prompts = std::make_shared<ScriptedPrompts>();
    SongRecord song;
    song[SongColumn::filename] = "/music/a.mp3";
    EXPECT_EQ (Session (optionsFor (folder)).browser()->database.insertSong (song), 0);
    {
        // No file grows any more, as on a full disk.
        const auto before = ::signal (SIGXFSZ, SIG_IGN);
        rlimit limit {};
        ASSERT_EQ (::getrlimit (RLIMIT_FSIZE, &limit), 0);
        const rlimit none { 0, limit.rlim_max };
        ASSERT_EQ (::setrlimit (RLIMIT_FSIZE, &none), 0);
        Session session (optionsFor (folder, prompts));
        const auto* room = session.browser();
        EXPECT_EQ (::setrlimit (RLIMIT_FSIZE, &limit), 0);
        ::signal (SIGXFSZ, before);
        ASSERT_NE (room, nullptr) << session.libraryFault();
        EXPECT_EQ (room->database.countSongs(), 1);
        ASSERT_EQ (prompts->asked.size(), 1);
        EXPECT_TRUE (prompts->asked[0].contains ("nothing that is done to the library is kept"))
            << prompts->asked[0];
        song[SongColumn::filename] = "/music/b.mp3";
        EXPECT_EQ (room->database.insertSong (song), 0);
        EXPECT_EQ (room->database.countSongs(), 2);
    }
    EXPECT_EQ (Session (optionsFor (folder)).browser()->database.countSongs(), 1);
}

TEST (PreferencesFile, TwoCopiesOfTheProgramKeepEachOthersValues)
{
    const TemporaryFolder folder;
    const auto file = folder.file ("preferences.txt");
    PreferencesFile one (file), other (file);
    EXPECT_TRUE (one.set ("size", "150"));
    EXPECT_TRUE (other.set ("window", "0 0 800 600"));
    EXPECT_EQ (PreferencesFile (file).get ("size"), "150");
}

TEST (PreferencesFile, FilesOfFormerVersionsAreTakenInOnce)
{
    const TemporaryFolder folder;
    const auto former = folder.file ("audio_device.xml");
    former.replaceWithText ("<DEVICESETUP\n deviceType=\"ALSA\"/>\n");
    PreferencesFile preferences (folder.file ("preferences.txt"));
    preferences.takeIn ("audio device", former);
    EXPECT_FALSE (former.exists());
    const auto text = PreferencesFile (folder.file ("preferences.txt")).get ("audio device");
    const auto xml = juce::parseXML (text);
    ASSERT_NE (xml, nullptr) << text;
    EXPECT_EQ (xml->getStringAttribute ("deviceType"), "ALSA");

    former.replaceWithText ("older");
    preferences.takeIn ("audio device", former);
    EXPECT_EQ (preferences.get ("audio device"), text) << "what is there counts";
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
    EXPECT_FALSE (blocked.set ("other", "1"));
    EXPECT_EQ (blocked.get ("size"), "200");
}

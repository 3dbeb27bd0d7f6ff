#include "session/archive/DataArchive.h"
#include "library/database/SongDatabase.h"
#include "session/archive/TarFile.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <map>

namespace
{
struct Silent : ImportProgress
{
    void setProgress (double part) override { EXPECT_TRUE (part >= 0 && part <= 1); }
    void setStatusText (const juce::String&) override {}
    bool shouldExit() const override { return isCancelled; }
    bool isCancelled = false;
};

/** One user's root and library. */
struct Home
{
    TemporaryFolder place;
    Folders folders { place.file ("root") };
    LibraryFile library { place.file ("SongManager") };

    void put (const juce::String& name, const juce::String& text) const
    {
        const auto file = folders.root.getChildFile (name);
        ASSERT_TRUE (file.create().wasOk() && file.replaceWithText (text)) << name;
    }

    void putSong (const char* name)
    {
        SongDatabase database (library.prepare().file);
        SongRecord song;
        song[SongColumn::filename] = name;
        ASSERT_EQ (database.insertSong (song), 0);
    }

    juce::String songs()
    {
        SongDatabase database (library.prepare().file);
        SongList list;
        EXPECT_EQ (database.fillLibrary (&list, SongField::filename, true), 0);
        juce::String names;
        for (const auto& entry : list.entries())
        {
            SongRecord song;
            EXPECT_EQ (database.readSong (entry.songId, song), 0);
            names << song[SongColumn::filename];
        }
        return names;
    }

    /** All files below the root by their names, but those of running programs. */
    std::map<juce::String, juce::String> texts() const
    {
        std::map<juce::String, juce::String> all;
        for (const auto& file : folders.root.findChildFiles (juce::File::findFiles, true))
            if (!file.hasFileExtension ("lock"))
                all[file.getRelativePathFrom (folders.root)] = file.loadFileAsString();
        return all;
    }
};

struct DataArchives : testing::Test
{
    Home old, fresh;
    juce::File archive = old.place.file ("data.tar.gz");
    Silent progress;

    void SetUp() override
    {
        old.put ("setup/platterdex.set", "settings");
        old.put (juce::String::fromUTF8 (
                     "samples/Bank/\xc3\xa4 \xe3\x81\x82 with a name that is longer than the hundred bytes "
                     "which the oldest kind of tar file can give to one.wav"),
                 "sample");
        old.put ("beatmarks/empty.xml", "");
        old.put ("mufin/px_mufin.ses", juce::String::repeatedString ("sounds ", 40));
        old.putSong ("/one");
        ASSERT_TRUE (old.library.file().getSiblingFile ("history/2026.m3u").create().wasOk());
    }

    DataArchive::Outcome write (DataArchive::Audio audio = DataArchive::Audio::leftOut)
    {
        return DataArchive::write (old.folders, old.library, archive, audio, "2.0", progress);
    }
    DataArchive::Outcome restore()
    {
        fresh.library.prepare (LibraryFile::Purpose::reading);
        return DataArchive::restore (archive, fresh.folders, fresh.library, progress);
    }
};
}

TEST_F (DataArchives, BringAllOfAUsersDataElsewhere)
{
    const auto texts = old.texts();
    old.put ("setup/session.lock", "held");
    old.put ("disk_recorder/night.wav", "recording");
    old.put ("platterdex", "a program beside its data");
    EXPECT_EQ (write().fault, "");
    const auto restored = restore();
    EXPECT_EQ (restored.fault, "");
    EXPECT_EQ (restored.files, 6);
    EXPECT_EQ (restored.former, juce::File()) << "nothing was in the way";
    EXPECT_EQ (fresh.texts(), texts);
    EXPECT_EQ (fresh.songs(), "/one");
    EXPECT_TRUE (fresh.library.file().getSiblingFile ("history/2026.m3u").existsAsFile());

    EXPECT_EQ (write (DataArchive::Audio::included).fault, "");
    EXPECT_EQ (restore().fault, "");
    EXPECT_EQ (fresh.texts()["disk_recorder/night.wav"], "recording");
}

TEST_F (DataArchives, KeepWhatTheyReplace)
{
    ASSERT_EQ (write().fault, "");
    fresh.put ("setup/platterdex.set", "mine");
    fresh.put ("script_files/mine.c", "not in the archive");
    fresh.putSong ("/mine");
    const auto restored = restore();
    EXPECT_EQ (restored.fault, "");
    EXPECT_EQ (fresh.texts()["setup/platterdex.set"], "settings");
    EXPECT_EQ (fresh.texts()["script_files/mine.c"], "not in the archive");
    EXPECT_EQ (restored.former.getChildFile ("setup/platterdex.set").loadFileAsString(), "mine");
    EXPECT_EQ (fresh.songs(), "/one");
    EXPECT_EQ (fresh.library.file().getParentDirectory().getNumberOfChildFiles (juce::File::findFiles,
                                                                                "*_replaced_*.sqlite"),
               1);
}

TEST_F (DataArchives, ChangeNothingWhereTheyAreDamagedOrOfOthers)
{
    ASSERT_EQ (write().fault, "");
    juce::MemoryBlock whole;
    ASSERT_TRUE (archive.loadFileAsData (whole));
    fresh.put ("setup/platterdex.set", "mine");
    fresh.putSong ("/mine");
    const auto texts = fresh.texts();
    const auto expectUntouched = [&] (const juce::String& fault, const char* what)
    {
        EXPECT_EQ (restore().fault, fault) << what;
        EXPECT_EQ (fresh.texts(), texts) << what;
        EXPECT_EQ (fresh.songs(), "/mine") << what;
    };
    const juce::String damaged ("\"data.tar.gz\" is damaged; nothing was changed."),
        foreign ("\"data.tar.gz\" is no backup of Platterdex.");

    for (const auto part : { 0.3, 0.6, 0.9, 0.999 })
    {
        archive.replaceWithData (whole.getData(),
                                 static_cast<size_t> (part * static_cast<double> (whole.getSize())));
        EXPECT_NE (restore().fault, "") << part;
        EXPECT_EQ (fresh.texts(), texts) << part;
    }
    // Any bit of the compressed stream: what its own reader lets pass, the sum finds, or it was a byte that holds nothing.
    for (size_t at = 100; at + 8 < whole.getSize(); at += whole.getSize() / 40)
    {
        auto bent = whole;
        bent[at] = static_cast<char> (bent[at] ^ 0x10);
        archive.replaceWithData (bent.getData(), bent.getSize());
        Home other;
        other.put ("setup/platterdex.set", "mine");
        other.library.prepare (LibraryFile::Purpose::reading);
        if (DataArchive::restore (archive, other.folders, other.library, progress).fault.isNotEmpty())
            EXPECT_EQ (other.texts(), texts) << at;
        else
            for (const auto& [name, text] : old.texts())
                EXPECT_EQ (other.texts()[name], text) << at;
    }

    archive.replaceWithText ("no archive");
    expectUntouched (foreign, "text");
    const auto make = [this] (std::initializer_list<std::pair<const char*, const char*>> entries)
    {
        TarWriter tar (archive);
        for (const auto& [name, text] : entries)
            EXPECT_TRUE (tar.add (name, juce::String (text)));
        EXPECT_TRUE (tar.close());
    };
    make ({ { "other.txt", "format=1\n" } });
    expectUntouched (foreign, "another tar file");
    make ({ { "platterdex-data.txt", "format=2\nversion=3.1\nfiles=0\n" } });
    expectUntouched ("\"data.tar.gz\" was made by a newer version of Platterdex (3.1), which can restore it.",
                     "newer");
    make ({ { "platterdex-data.txt", "format=1\nfiles=0\n" } });
    expectUntouched (damaged, "without its end");
    for (const auto* name :
         { "root/../../out", "/tmp/out", "root//setup", "root/./x", "elsewhere/x", "root", "root/a\\b" })
    {
        make ({ { "platterdex-data.txt", "format=1\nfiles=1\n" }, { name, "x" } });
        expectUntouched (damaged, name);
    }
}

TEST_F (DataArchives, ChangeNothingWhereSomethingIsInUseOrTheUserBreaksOff)
{
    ASSERT_EQ (write().fault, "");
    fresh.put ("setup/platterdex.set", "mine");
    fresh.putSong ("/mine");
    const auto texts = fresh.texts();
    {
        LibraryFile other (fresh.place.file ("SongManager"));
        other.prepare();
        EXPECT_EQ (restore().fault, "Another program has the library open; it stays as it is.");
        EXPECT_EQ (fresh.texts(), texts) << "what had taken its place went back";
    }
    progress.isCancelled = true;
    EXPECT_EQ (restore().fault, "The restoring was interrupted; nothing was changed.");
    EXPECT_EQ (fresh.texts(), texts);
    const auto made = archive.getLastModificationTime();
    EXPECT_EQ (write().fault, "The backup was interrupted; none was made.");
    EXPECT_EQ (archive.getLastModificationTime(), made) << "the former backup stays";
}

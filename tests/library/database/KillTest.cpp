#include "LibraryFixture.h"
#include "LibraryWriter.h"

#include "shared/KilledProgram.h"

#include <cstdlib>

namespace
{
struct Writer : KilledProgram
{
    Writer (const juce::File& file, int first)
        : KilledProgram (PX_LIBRARY_WRITER, { file.getFullPathName(), juce::String (first) })
    {
    }
};

/** Lets the writer commit `units` units and kills it at once.
    @returns how many it said to have committed, which is more than that */
int writeUntilKilled (const juce::File& file, int first, int units)
{
    Writer writer (file, first);
    writer.waitFor (units);
    return writer.kill();
}

/** The number of kills; more by scripts/kill-library.sh. */
int rounds()
{
    const auto* wanted = std::getenv ("PX_KILL_ROUNDS");
    return wanted != nullptr ? std::atoi (wanted) : 25;
}

using KilledLibrary = LibraryFixture;
}

TEST_F (KilledLibrary, LosesOnlyTheTransactionInFlight)
{
    const auto song = listOf (SongListKind::library, -1, { add ("/first") });
    ASSERT_EQ (database.createPlaylist ("p", &song, 1), 0);
    juce::Random random (2026);
    auto unit = 4, lastPlaylist = 0, lastComment = 0;
    for (int round = 0; round < rounds(); ++round)
    {
        database.close();
        const auto first = unit;
        const auto last = first + writeUntilKilled (file, first, 1 + random.nextInt (60)) - 1;
        ASSERT_GE (last, first);
        ASSERT_EQ (database.open (file), 0);
        ASSERT_EQ (ask ("PRAGMA integrity_check"), "ok");

        // The one after the last that was reported may be there or not, but not in part.
        for (unit = first; unit <= last + 1; ++unit)
        {
            const auto kind = WriterUnits::kindOf (unit);
            if (kind == WriterUnits::Kind::playlist && unit <= last)
                lastPlaylist = unit;
            if (kind == WriterUnits::Kind::comment && unit <= last)
                lastComment = unit;
            if (kind != WriterUnits::Kind::oneSong && kind != WriterUnits::Kind::manySongs)
                continue;
            const auto whole = kind == WriterUnits::Kind::oneSong ? 1 : WriterUnits::songsOfMany;
            auto there = 0;
            for (int i = 0; i < whole; ++i)
                there += database.countFilename (juce::String (WriterUnits::pathOf (unit, i)));
            ASSERT_TRUE (there == whole || (unit > last && there == 0)) << there << " songs of unit " << unit;
        }
        const auto entries = ask ("SELECT COUNT(*) FROM playlists_songs"),
                   comment = ask ("SELECT comment FROM songs WHERE id = 1");
        EXPECT_TRUE (lastPlaylist == 0 || entries == std::to_string (WriterUnits::entriesOf (lastPlaylist))
                     || entries == std::to_string (WriterUnits::entriesOf (last + 1)))
            << entries;
        EXPECT_TRUE (lastComment == 0 || comment == std::to_string (lastComment)
                     || comment == std::to_string (last + 1))
            << comment;
    }
}

TEST_F (KilledLibrary, LosesNothingOfTwoProgramsThatWriteAtOnce)
{
    const auto song = listOf (SongListKind::library, -1, { add ("/first") });
    ASSERT_EQ (database.createPlaylist ("p", &song, 1), 0);
    juce::Random random (2027);
    for (int round = 0, unit = 4; round < std::max (2, rounds() / 5); ++round, unit += 10'000)
    {
        database.close();
        const auto other = unit + 5'000;
        Writer one (file, unit), two (file, other);
        one.waitFor (1 + random.nextInt (40));
        two.waitFor (1 + random.nextInt (40));
        const auto ofOne = one.kill();
        const auto ofTwo = two.kill();
        ASSERT_EQ (database.open (file), 0);
        ASSERT_EQ (ask ("PRAGMA integrity_check"), "ok");
        for (const auto& [first, committed] : { std::pair (unit, ofOne), std::pair (other, ofTwo) })
            for (auto each = first; each < first + committed; ++each)
            {
                const auto kind = WriterUnits::kindOf (each);
                if (kind == WriterUnits::Kind::oneSong || kind == WriterUnits::Kind::manySongs)
                {
                    ASSERT_EQ (database.countFilename (juce::String (WriterUnits::pathOf (each, 0))), 1)
                        << each;
                }
            }
        const auto entries = std::stoi (ask ("SELECT COUNT(*) FROM playlists_songs"));
        auto isOfOneUnit = entries == 1;
        for (auto each = unit; each <= unit + ofOne; ++each)
            isOfOneUnit = isOfOneUnit || entries == WriterUnits::entriesOf (each);
        for (auto each = other; each <= other + ofTwo; ++each)
            isOfOneUnit = isOfOneUnit || entries == WriterUnits::entriesOf (each);
        EXPECT_TRUE (round > 0 || isOfOneUnit) << entries << ": a list of two halves";
    }
}

#include "BrowseFixture.h"

#include "shared/KilledProgram.h"

using testing::AnyOf;
using testing::ElementsAre;

namespace
{
using KilledEdits = BrowseFixture;
}

TEST_F (KilledEdits, OfTwoProgramsLeaveEveryListAsItWasBeforeOrAfterAnEdit)
{
    const auto songs = addSongs (3);
    std::array<int32_t, 2> lists {};
    const SongList two = [&]
    {
        SongList made (SongListKind::library);
        for (const auto id : { songs[0], songs[1] })
            made.add ({ 0, 0, id, -1, nullptr });
        return made;
    }();
    for (auto& list : lists)
        ASSERT_EQ (database.createPlaylist ("p", &two, 1, &list), 0);
    juce::Random random (2028);
    for (int round = 0; round < 4; ++round)
    {
        // A list in the midst of an edit goes on from there: put it back for the next round.
        for (const auto list : lists)
        {
            ListContent content;
            ASSERT_EQ (database.readList ({ SongListKind::playlist, list }, content), 0);
            content.entries = { { -1, songs[0] }, { -1, songs[1] } };
            ASSERT_EQ (database.writeList (content), 0);
        }
        const auto program = [&] (int32_t list)
        {
            return KilledProgram (PX_LIST_EDITOR,
                                  { file.getFullPathName(), folder.file ("").getFullPathName(),
                                    juce::String (list), juce::String (songs[2]) });
        };
        auto one = program (lists[0]), other = program (lists[1]);
        one.waitFor (1 + random.nextInt (8));
        other.waitFor (1 + random.nextInt (8));
        EXPECT_GT (one.kill(), 0);
        EXPECT_GT (other.kill(), 0);

        SqlConnection connection;
        ASSERT_EQ (connection.open (file.getFullPathName()), 0);
        std::string health;
        ASSERT_EQ (connection.query ("PRAGMA integrity_check",
                                     [&] (const SqlRow& row) { health += row.text (0).toStdString(); }),
                   0);
        EXPECT_EQ (health, "ok");
        for (const auto list : lists)
            EXPECT_THAT (songsOf ({ SongListKind::playlist, list }),
                         AnyOf (ElementsAre (songs[0], songs[1]), ElementsAre (songs[0], songs[1], songs[2]),
                                ElementsAre (songs[1], songs[2]), ElementsAre (songs[2], songs[1]),
                                ElementsAre()));
    }
}

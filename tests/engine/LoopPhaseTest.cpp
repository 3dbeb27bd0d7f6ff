#include "ClickDecks.h"

#include <functional>

namespace
{
constexpr int leader = 0, follower = 1;

LoopCommands& loops (ClickDecks& decks)
{
    return decks.host->engine().loops;
}

using Act = std::function<void (ClickDecks&)>;

Act loop (int deck, int size)
{
    return [=] (ClickDecks& decks)
    {
        decks.deck (deck).loopSizes.loop = static_cast<int8_t> (size);
        loops (decks).toggleLoop (deck);
    };
}

Act roll (int deck, int size)
{
    return [=] (ClickDecks& decks)
    {
        decks.deck (deck).loopSizes.loop = static_cast<int8_t> (size);
        loops (decks).toggleLeap (deck);
    };
}

Act jump (int deck, int size, int direction)
{
    return [=] (ClickDecks& decks)
    {
        decks.deck (deck).loopSizes.move = static_cast<int8_t> (size);
        loops (decks).moveLoop (deck, direction);
    };
}

struct LoopCase
{
    const char* name;
    Act begin;
    double seconds = 20.0;
    Act end = [] (ClickDecks&) {};
    double swing = 0.0; ///< of both tables
    double meanwhile =
        1.0; ///< largest distance of the clicks from the beginning to the end, in ms; 0: not looked at
    double afterwards = 1.0; ///< from a second after the end on, in ms
};
}

TEST (LoopPhase, LockedDecksStayTogetherThroughLoopsAndBeatJumps)
{
    const LoopCase cases[] {
        { "the leader loops 4 beats for two minutes", loop (leader, 7), 120.0, loop (leader, 7) },
        { "the follower does", loop (follower, 7), 120.0, loop (follower, 7) },
        { "both loop, 4 beats and 1",
          [] (auto& d)
          {
              loop (leader, 7) (d);
              loop (follower, 5) (d);
          },
          60.0 },
        { "a manual loop of the leader's, one per cent too long",
          [] (auto& d)
          {
              loops (d).loopIn (leader);
              d.render (2.0);
              loops (d).loopOut (leader);
              d.deck (leader).loops.out = d.deck (leader).loops.in + 4.04 * 22050.0;
          },
          30.0, [] (auto& d) { loops (d).loopOut (leader); }, 0.0, 45.0, 45.0 },
        { "a quarter beat of the leader's", loop (leader, 3), 7.13, loop (leader, 3), 0.0, 0.0 },
        { "an eighth of the follower's", loop (follower, 2), 7.13, loop (follower, 2), 0.0, 0.0 },
        { "a roll of the leader's", roll (leader, 2), 5.07, roll (leader, 2), 0.01, 0.0, 2.5 },
        { "a roll of the follower's", roll (follower, 3), 5.07, roll (follower, 3), 0.01, 0.0, 2.5 },
        { "the leader loops 4 beats of a table that varies", loop (leader, 7), 30.0, loop (leader, 7), 0.01,
          25.0 },
        { "the follower loops 4 of them", loop (follower, 7), 30.0, loop (follower, 7), 0.01, 25.0 },
        { "the leader jumps a beat on", jump (leader, 5, 1), 5.0 },
        { "the leader jumps 16 beats back", jump (leader, 9, -1), 5.0, jump (leader, 9, 1) },
        { "the follower jumps 4 beats on", jump (follower, 7, 1), 5.0, jump (follower, 7, -1) },
        { "a loop of 4 beats is moved by 4 and halved",
          [] (auto& d)
          {
              loop (leader, 7) (d);
              jump (leader, 7, 1) (d);
              d.render (3.3);
              loops (d).changeSize (leader, -1);
          },
          10.0 },
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.name);
        ClickDecks decks (false, 512, 22050.0);
        const auto seconds = c.seconds + 60.0;
        decks.put (leader, { 120.0, 22050.0, c.swing, seconds });
        decks.put (follower, { 124.0, 24000.0, -c.swing, seconds, 0.4 });
        decks.playPause (leader);
        decks.render (18.4);
        decks.syncLock (follower);
        decks.playPause (follower);
        decks.render (10.2);

        const auto begun = decks.host->position();
        c.begin (decks);
        decks.render (c.seconds);
        const auto ended = decks.host->position();
        c.end (decks);
        decks.render (1.0);
        const auto settled = decks.host->position();
        decks.render (4.0);
        const auto after = decks.distances (follower, leader, settled);
        EXPECT_GE (after.size(), 7u);
        EXPECT_LT (ClickDecks::largest (after), c.afterwards);
        if (c.meanwhile > 0.0)
        {
            auto during = decks.distances (follower, leader, begun);
            during.resize (std::min (
                during.size(), static_cast<size_t> (static_cast<double> (ended - begun) / decks.rate * 1.9)));
            EXPECT_GT (static_cast<double> (during.size()), c.seconds * 1.7);
            EXPECT_LT (ClickDecks::largest (during), c.meanwhile);
        }
    }
}

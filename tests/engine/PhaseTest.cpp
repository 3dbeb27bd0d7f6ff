#include "ClickDecks.h"

#include <functional>

namespace
{
struct LockedCase
{
    const char* name;
    ClickTrack leader, follower;
    bool keyLock = true;
    double leaderPitch = 0.5, semitones = 0.0;
};

/** The leader plays, 2.4 s later the follower is locked and started. @returns the largest distance of clicks in ms */
double largestDistance (const LockedCase& c, double seconds, int blockFrames = 512, double rate = 44100.0)
{
    ClickDecks decks (false, blockFrames, rate);
    decks.put (0, c.leader);
    decks.put (1, c.follower);
    decks.deck (0).tempo.pitch = c.leaderPitch;
    decks.deck (1).tempo.keyTuning = c.semitones;
    for (int deck : { 0, 1 })
        decks.deck (deck).tempo.keyLock = c.keyLock;
    decks.playPause (0);
    decks.render (2.4);
    decks.syncLock (1);
    decks.playPause (1);
    decks.render (seconds);
    const auto distances = decks.distances (1, 0);
    EXPECT_GT (static_cast<double> (distances.size()), seconds * 1.5);
    return ClickDecks::largest (distances);
}

double meanOf (const std::vector<double>& values)
{
    double sum = 0.0;
    for (const auto value : values)
        sum += value;
    return sum / static_cast<double> (values.size());
}
}

TEST (Phase, LockedDecksAreHeardTogetherFromTheFirstBeat)
{
    const LockedCase cases[] {
        { "same tempo", {}, {} },
        { "other tempo", { 126.0 }, { 118.0 } },
        { "other rates", { 120.0, 48000.0 }, { 127.3 } },
        { "other rates the other way", { 127.3 }, { 120.0, 48000.0 }, true, 0.7 },
        { "far tempo", { 120.0 }, { 87.0 } },
        { "no key lock", { 120.0 }, { 126.0 }, false, 0.3 },
        { "in another key", { 120.0 }, { 123.0 }, true, 0.6, 3.0 },
        { "the leader's tempo varies", { 120.0, 44100.0, 0.02 }, { 124.0 } },
        { "the follower's tempo varies", { 124.0 }, { 120.0, 48000.0, 0.02 } },
        { "both vary", { 121.0, 44100.0, 0.01 }, { 120.0, 44100.0, 0.015 }, false },
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.name);
        EXPECT_LT (largestDistance (c, 10.0), 0.5);
    }
}

TEST (Phase, TemposTooFarApartAreLockedAtHalfOrDoubleOrNotAtAll)
{
    struct Case
    {
        const char* name;
        ClickTrack leader, follower;
        double heardBpm; ///< of the follower
        double beatRatio;
        bool keyLock = true;
        double leaderPitch = 0.5;
    };
    const Case cases[] {
        { "85 under 140", { 140.0 }, { 85.0 }, 70.0, 0.5 },
        { "without key lock", { 140.0 }, { 85.0 }, 70.0, 0.5, false },
        { "the tempos vary", { 140.0, 44100.0, 0.02 }, { 85.0, 48000.0, 0.01 }, 71.4, 0.5, true, 0.625 },
        { "130 over 61", { 61.0, 48000.0 }, { 130.0 }, 122.0, 2.0 },
        { "50 under 170", { 170.0 }, { 50.0 }, 50.0, 0.0 },
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.name);
        ClickDecks decks;
        decks.put (0, c.leader);
        decks.put (1, c.follower);
        decks.deck (0).tempo.pitch = c.leaderPitch;
        auto& follower = decks.deck (1);
        follower.tempo.keyLock = c.keyLock;
        decks.playPause (0);
        decks.render (2.4);
        decks.syncLock (1);
        decks.playPause (1);
        decks.render (10.0);
        EXPECT_EQ (follower.sync.beatRatio, c.beatRatio);
        EXPECT_NEAR (follower.marks.bpm * follower.tempo.factor, c.heardBpm, 0.05 * c.heardBpm);
        if (c.beatRatio == 0.0)
            continue;
        // Each click of the slower deck has its partner.
        const auto slower = c.beatRatio < 1.0 ? 1 : 0;
        const auto distances = decks.distances (slower, 1 - slower, std::llround (2.5 * decks.rate));
        EXPECT_GE (distances.size(), 9u);
        EXPECT_LT (ClickDecks::largest (distances), 0.5);
    }
}

TEST (Phase, ABorderOfHalfTempoIsNotCrossedToAndFro)
{
    ClickDecks decks;
    decks.put (0, { 140.0 });
    decks.put (1, { 94.0 });
    auto& follower = decks.deck (1);
    decks.playPause (0);
    decks.syncLock (1);
    decks.playPause (1);
    auto changes = 0;
    for (int step = 0; step < 40; ++step)
    {
        decks.deck (0).tempo.pitch = 0.55 + 0.03 * (step % 2); // 1.501 and 1.508 times, then back to 1.49
        if (step > 20)
            decks.deck (0).tempo.pitch = 0.5;
        const double before = follower.sync.beatRatio;
        decks.render (0.05);
        changes += follower.sync.beatRatio != before ? 1 : 0;
    }
    EXPECT_EQ (changes, 1);
    EXPECT_EQ (follower.sync.beatRatio, 0.5);
    decks.deck (0).tempo.pitch = 0.0;
    decks.render (0.05);
    EXPECT_EQ (follower.sync.beatRatio, 1.0) << "well within reach";
}

TEST (Phase, MinutesAddUpNothing)
{
    // At low rates, which cost less.
    const LockedCase c {
        "long", { 121.37, 12000.0, 0.0, 330.0 }, { 126.91, 11025.0, 0.01, 330.0 }, true, 0.61
    };
    EXPECT_LT (largestDistance (c, 300.0, 2048, 16000.0), 1.0);
}

TEST (Phase, WhatAHandDoesMeanwhileHasADefinedOutcome)
{
    constexpr double offGrid = 100.0; // of an outcome whose clicks need not meet
    struct Case
    {
        const char* name;
        std::function<void (ClickDecks&, double seconds)> act; ///< every 10 ms, for a second
        double distance = 0.0;                                 ///< of the clicks afterwards, in ms
        double largestChange = 0.01; ///< of the time from click to click of the follower, in its usual one
        double tolerance = 0.5;      ///< ms
    };
    const auto once = [] (auto&& action)
    {
        return [action] (ClickDecks& decks, double seconds)
        {
            if (seconds == 0.0)
                action (decks);
        };
    };
    const auto nudge = [] (int deck)
    {
        return [deck] (ClickDecks& decks, double seconds)
        { decks.host->engine().transport.setNudge (deck, seconds < 0.5 ? 1 : 0); };
    };
    const Case cases[] {
        { "leader's pitch, slowly", [] (auto& d, double t) { d.deck (0).tempo.pitch = 0.5 + 0.4 * t; }, 0.0,
          0.13 },
        { "leader's pitch at once", once ([] (auto& d) { d.deck (0).tempo.pitch = 0.9; }), 0.0, 0.13 },
        { "leader nudged", nudge (0), 20.0, 0.01, 2.0 },
        { "follower nudged", nudge (1), -20.0, 0.05, 2.0 },
        { "leader's grid moved",
          once ([] (auto& d)
                { d.deck (0).marks.downbeatPosition = d.deck (0).marks.downbeatPosition + 512; }),
          512.0 / 44.1 },
        { "leader's grid moved by half a beat",
          once ([] (auto& d)
                { d.deck (0).marks.downbeatPosition = d.deck (0).marks.downbeatPosition + 11025; }) },
        { "leader's tempo tapped",
          once ([] (auto& d) { d.deck (0).marks.bpm = d.deck (0).marks.bpm * 1.01; }), offGrid, 0.02 },
        { "leader sought", once ([] (auto& d) { d.host->engine().transport.seekFrames (0, 700'123.0); }), 0.0,
          1.01 },
        { "leader rewound", once ([] (auto& d) { d.host->engine().transport.rewind (0); }), offGrid },
        { "follower sought", once ([] (auto& d) { d.host->engine().transport.seekFrames (1, 700'123.0); }),
          0.0, 1.01 },
        { "follower made leader", once ([] (auto& d) { d.host->engine().transport.setMaster (1); }) },
        { "key and key lock", once (
                                  [] (auto& d)
                                  {
                                      d.deck (1).tempo.keyTuning = 2.0;
                                      d.deck (1).tempo.keyLock = 0;
                                  }) },
        { "lock taken off", once ([] (auto& d) { d.syncLock (1); }) },
        { "leader stopped", once ([] (auto& d) { d.playPause (0); }), offGrid },
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.name);
        ClickDecks decks;
        decks.put (0, { 120.0, 44100.0, 0.0, 40.0 });
        decks.put (1, { 124.0, 48000.0, 0.0, 40.0 });
        decks.playPause (0);
        decks.render (2.4);
        decks.syncLock (1);
        decks.playPause (1);
        decks.render (3.0);
        for (int step = 0; step <= 100; ++step)
        {
            c.act (decks, step / 100.0);
            decks.render (0.01);
        }
        decks.render (3.0);
        const auto settled = decks.host->position();
        decks.render (4.0);

        const auto distances = decks.distances (1, 0, settled);
        if (c.distance != offGrid)
        {
            EXPECT_GE (distances.size(), 7u);
            EXPECT_NEAR (meanOf (distances), c.distance, c.tolerance);
            for (const auto distance : distances)
                EXPECT_NEAR (distance, meanOf (distances), 0.3);
        }
        const auto& heard = decks.clicks[1];
        for (size_t i = 1; i < heard.size(); ++i)
            EXPECT_LE (std::abs (heard[i] - heard[i - 1] - 22050.0), c.largestChange * 22050.0 + 40.0)
                << heard[i] / decks.rate;
    }
}

TEST (Phase, ADeckInAHostFollowsItsSong)
{
    struct Case
    {
        const char* name;
        std::function<void (HostPosition&, double seconds)> act; ///< every 10 ms, from 4 s to 10 s
        double meanwhile = 1.0; ///< largest distance until it has settled, in ms
    };
    const auto at = [] (double time, auto&& action)
    {
        return [time, action] (HostPosition& host, double seconds)
        {
            if (std::abs (seconds - time) < 0.005)
                action (host);
        };
    };
    const Case cases[] {
        { "it just plays", [] (auto&, double) {} },
        { "the tempo steps up", at (5.0, [] (auto& h) { h.setBpm (126.0); }), 12.0 },
        { "a ramp", [] (auto& h, double t) { h.setBpm (120.0 + std::min (12.0, (t - 4.0) * 2.4)); }, 12.0 },
        { "a ramp down", [] (auto& h, double t) { h.setBpm (120.0 - std::min (9.0, (t - 4.0) * 1.8)); },
          12.0 },
        { "a locate", at (5.13, [] (auto& h) { h.seek (31.77); }) },
        { "a loop of 1.3 s",
          [] (auto& h, double t)
          {
              if (std::fmod (t + 0.001, 1.3) < 0.01)
                  h.seek (6.0);
          },
          2.0 }, // a click that the fade of a jump takes the edge off is found late
        { "stop and start",
          [] (auto& h, double t)
          {
              if (t > 5.004 && t < 5.274)
                  h.stop();
              else
                  h.play();
          } },
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.name);
        ClickDecks decks (true);
        auto& song = decks.host->transport();
        std::vector<double> beats;
        const auto render = [&] // 10 ms
        {
            const auto from = *song.getPosition();
            const auto frame = static_cast<double> (decks.host->position());
            decks.render (0.01);
            const auto perFrame = *from.getBpm() / (60.0 * decks.rate);
            const auto untilBeat = (std::ceil (*from.getPpqPosition()) - *from.getPpqPosition()) / perFrame;
            if (from.getIsPlaying() && untilBeat < 441.0)
                beats.push_back (frame + untilBeat);
        };
        decks.put (0, { 124.0, 48000.0, 0.01, 40.0 });
        song.play();
        for (int i = 0; i < 100; ++i)
            render();
        decks.syncLock (0);
        decks.playPause (0);
        for (int i = 100; i < 400; ++i)
            render();
        for (int i = 400; i < 1000; ++i)
        {
            c.act (song, i / 100.0);
            render();
        }
        for (int i = 1000; i < 1500; ++i)
            render();

        const auto settled = static_cast<int64_t> (13.0 * decks.rate);
        EXPECT_GE (decks.distances (0, beats, settled).size(), 3u);
        EXPECT_LT (ClickDecks::largest (decks.distances (0, beats)), c.meanwhile);
        EXPECT_LT (ClickDecks::largest (decks.distances (0, beats, settled)), 0.5);
    }
}

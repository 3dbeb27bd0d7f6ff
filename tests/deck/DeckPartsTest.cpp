#include "DeckFixture.h"

#include <gtest/gtest.h>

#include <functional>

namespace
{
template <typename Field>
void change (Field& field)
{
    field = 7;
}

void change (std::array<Relaxed<double>, cueSlotCount>& slots)
{
    slots.back() = 5.0;
}

void change (bool& flag)
{
    flag = true;
}

void change (PhaseHold& hold)
{
    hold.distance = 0.5;
}

// Every field of each part: a binding that names too few does not compile.
const auto fieldsOfHead = [] (auto& part, const auto& each)
{
    auto& [position, rate, linear, roll, jog, bend, accel, declickAt, declickLeft] = part;
    for (auto* field : { &position, &rate, &linear, &roll, &jog, &bend, &accel, &declickAt })
        each (*field);
    each (declickLeft);
};
const auto fieldsOfPlay = [] (auto& part, const auto& each)
{
    auto& [on, cueHold, currentCue, reverse, nudge, loadNext, elapsed, follows, armed] = part;
    for (auto* field : { &on, &cueHold, &currentCue, &reverse, &nudge, &loadNext, &follows })
        each (*field);
    each (elapsed);
    each (armed);
};
const auto fieldsOfLoops = [] (auto& part, const auto& each)
{
    auto& [mode, rolling, start, in, out, inSet, outSet] = part;
    for (auto* field : { &mode, &rolling, &inSet, &outSet })
        each (*field);
    for (auto* field : { &start, &in, &out })
        each (*field);
};
const auto fieldsOfJog = [] (auto& part, const auto& each)
{
    auto& [on, ended, armed, keep, touched, time] = part;
    for (auto* field : { &on, &ended, &armed, &keep, &touched })
        each (*field);
    each (time);
};
const auto fieldsOfSync = [] (auto& part, const auto& each)
{
    auto& [resync, oneShot, beatRatio, hold] = part;
    each (resync);
    each (oneShot);
    each (beatRatio);
    each (hold);
};
const auto fieldsOfMarks = [] (auto& part, const auto& each)
{
    auto& [cues, startPoint, startPointOn, bpm, average, index, place, fixed, step, offset, confidence] =
        part;
    each (cues);
    for (auto* field : { &startPoint, &bpm, &average, &step, &offset })
        each (*field);
    for (auto* field : { &index, &place })
        each (*field);
    for (auto* field : { &startPointOn, &fixed, &confidence })
        each (*field);
};
const auto fieldsOfFacts = [] (auto& part, const auto& each)
{
    auto& [rate, frames, beats, isAnalysed, gain, peak, stated, key] = part;
    each (rate);
    each (frames);
    each (beats);
    each (isAnalysed);
    each (gain);
    each (peak);
    each (stated);
    each (key);
};

/** Changes one field after the other: each must show in the comparison, go into a copy and be gone after a reset. */
template <typename Part, typename Fields>
void check (Part& part, const Fields& fields, const std::function<void()>& reset)
{
    reset();
    const Part fresh = part;
    int count = 0;
    fields (part,
            [&] (auto& field)
            {
                SCOPED_TRACE (++count);
                reset();
                change (field);
                EXPECT_FALSE (part == fresh);
                const Part copy = part;
                EXPECT_TRUE (copy == part);
                reset();
                EXPECT_TRUE (part == fresh);
                EXPECT_FALSE (copy == part);
                part = copy;
                EXPECT_TRUE (part == copy);
            });
}
}

TEST (DeckParts, ANewTrackBeginsWithEachFieldAtItsDefault)
{
    DeckFixture decks;
    auto& deck = decks.deck();
    const auto reset = [&] { deck.resetTrack(); };
    check (deck.head, fieldsOfHead, reset);
    check (deck.play, fieldsOfPlay, reset);
    check (deck.loops, fieldsOfLoops, reset);
    check (deck.jog, fieldsOfJog, reset);
    check (deck.sync, fieldsOfSync, reset);
    check (deck.marks, fieldsOfMarks, reset);
    check (deck.track, fieldsOfFacts, reset);
}

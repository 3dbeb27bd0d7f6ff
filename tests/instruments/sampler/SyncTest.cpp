#include "SamplerFixture.h"
#include "engine/ClickDecks.h"

namespace
{
/** Decks of clicks and a pad with a loop of them, synced. */
struct SyncedPad : ClickDecks
{
    explicit SyncedPad (const ClickTrack& track, double sampleBpm, int beats = 4, int block = 512)
        : ClickDecks (false, block)
    {
        host->engine().setParameter (CPlatterdex::standaloneCall, CPlatterdex::standaloneValue);
        put (0, track);
        host->engine().settings.masterDeck = 0;
        putLoop (sampleBpm, beats);
    }

    /** The same inside a host, whose beats the pad follows. */
    SyncedPad (double sampleBpm, int block) : ClickDecks (true, block) { putLoop (sampleBpm, 4); }

    void putLoop (double sampleBpm, int beats)
    {
        const auto perBeat = static_cast<int> (std::lround (60.0 / sampleBpm * rate));
        std::vector<float> signal (static_cast<size_t> (perBeat * beats));
        for (int beat = 0; beat < beats; ++beat)
            for (int i = 0; i < 400; ++i)
                signal[static_cast<size_t> (beat * perBeat + i)] =
                    static_cast<float> (0.79 * std::exp (-i / 80.0) * std::cos (i * 0.4274));
        SampleFacts facts;
        facts.beats = 2.0 * beats;
        facts.bpm = sampleBpm;
        putSample (pads(), 0, signal, facts);
        pads().setPlayMode (0, loopMode);
        pads().setSync (true);
    }

    Sampler& pads() { return host->engine().sampler; }
    /** @param lead   ms by which the master's clicks are heard before its beats */
    double distanceFrom (int64_t frame, double lead = 0.0) const
    {
        auto all = distances (sampler, 0, frame);
        for (auto& each : all)
            each -= lead;
        return largest (all);
    }
    size_t clicksFrom (int64_t frame) const
    {
        const auto& all = clicks[sampler];
        return static_cast<size_t> (std::count_if (
            all.begin(), all.end(), [&] (double c) { return c >= static_cast<double> (frame); }));
    }
};
}

TEST (SamplerSync, BeatsStayOnTheMastersThroughTenMinutesOfTempoChanges)
{
    for (const double sampleBpm : { 120.0, 110.0 })
    {
        SyncedPad desk ({ .bpm = 120.0, .seconds = 700.0 }, sampleBpm);
        desk.host->engine().decks.pitchRange = 0.5;
        desk.playPause (0);
        desk.render (1.2345);
        desk.pads().padPress (0, 127);
        for (int step = 0; step < 3000; ++step)
        {
            // A hand that rides the fader by 15 % up and down, and now and then lets it snap by 3 %.
            const auto snap = step / 200 % 2 == 0 ? 0.03 : -0.03;
            desk.deck (0).tempo.pitch = 0.5 + 0.3 * std::sin (step * 0.02) + snap;
            desk.render (0.2);
        }
        // 0.4 at most, but for the click after a snap, to which two stretchers come on different ways.
        EXPECT_LT (desk.distanceFrom (0), 1.2) << sampleBpm;
        EXPECT_GT (desk.clicksFrom (0), 1000u);
    }
}

TEST (SamplerSync, BeatsLieOnTheMastersAtAnyRatioFromTheFirstOn)
{
    for (const double ratio : { 0.502, 0.573, 0.724, 0.947, 1.059, 1.299, 1.46, 1.68, 1.78, 1.907, 1.997 })
    {
        SyncedPad desk ({ .bpm = 126.0 }, 126.0 / ratio);
        desk.playPause (0);
        desk.render (1.2345); // 18 ms before a beat
        desk.pads().padPress (0, 127);
        desk.render (20.0);
        EXPECT_LT (desk.distanceFrom (0), 0.8) << ratio;
        EXPECT_GT (desk.clicksFrom (0), 40u) << ratio;
    }
}

TEST (SamplerSync, PadsThatAJumpOfTheMasterPullsDoNotClick)
{
    SyncedPad desk ({ .bpm = 126.0 }, 120.0, 4, 128);
    constexpr double sampleBpm = 118.0;
    SampleFacts facts;
    facts.beats = 8.0;
    facts.bpm = sampleBpm;
    const auto tone = toneFrom (1.0, 4 * 60.0 / sampleBpm);
    desk.pads().clearSlot (0);
    for (int pad = 1; pad < Sampler::padCount; ++pad)
    {
        putSample (desk.pads(), pad, tone, facts);
        desk.pads().setPlayMode (pad, loopMode);
    }
    std::vector<float> bus;
    desk.host->sink = [&] (const float* const* channels, int frames)
    { return bus.insert (bus.end(), channels[12], channels[12] + frames), true; };
    desk.playPause (0);
    desk.render (1.0);
    for (int pad = 1; pad < Sampler::padCount; ++pad)
        desk.pads().padPress (pad, 127);
    for (const double seconds : { 2.0, 20.07, 41.1, 1.23 })
    {
        const CallbackLock lock (desk.host->engine().getCallbackLock(), "test");
        desk.deck (0).jumpTo (seconds * desk.rate);
        desk.render (1.5);
        for (int pad = 1; pad < Sampler::padCount; ++pad)
            EXPECT_NEAR (desk.pads().desk.slots[1].position,
                         desk.pads().desk.slots[static_cast<size_t> (pad)].position, 0.001 * desk.rate)
                << seconds;
    }
    {
        const CallbackLock lock (desk.host->engine().getCallbackLock(), "test");
        auto& deck = desk.deck (0);
        deck.jumpTo (deck.heardPosition() + 0.012 * desk.rate); // near enough to be taken up at the next beat
        desk.render (1.5);
    }
    EXPECT_GT (Signals::peak (bus), 3.0);
    EXPECT_LT (roughness (bus), 15.0 * (roughness (tone) + 0.006));
}

TEST (SamplerSync, ASwitchOfAllPadsIsHeardOverSomeBlocksWithoutAClick)
{
    constexpr int pads = Sampler::padCount;
    SamplerRun run (128);
    SampleFacts facts;
    facts.bpm = 150.0;
    const auto tone = toneFrom (1.0, 2.0, 110.0);
    for (int pad = 0; pad < pads; ++pad)
    {
        putSample (run.sampler(), pad, tone, facts);
        run.sampler().setPlayMode (pad, loopMode);
        run.sampler().padPress (pad, 127);
    }
    run.render (0.5);
    const auto& slots = run.sampler().desk.slots;
    const auto follow = [&]
    {
        return static_cast<int> (std::count_if (slots.begin(), slots.begin() + pads,
                                                [] (const auto& slot) { return slot.speed != 1.0; }));
    };
    // To begin a stretcher costs as much as thirty blocks of it.
    run.sampler().setSync (true);
    for (int before = 0; before < pads;)
    {
        run.render (128 / run.rate);
        const auto now = follow();
        ASSERT_GT (now, before);
        ASSERT_LE (now, before + 2);
        before = now;
    }
    run.render (0.3);
    run.sampler().renewStretchers (48000.0);
    run.sampler().waitUntilIdle();
    run.render (0.3);
    run.sampler().setSync (false);
    run.render (0.5);
    EXPECT_EQ (follow(), 0);
    EXPECT_LT (roughness (run.taken()), pads * (roughness (tone) + 0.006));
}

TEST (SamplerSync, FollowsAMasterThatJumpsLoopsNudgesAndReverses)
{
    for (const int block : { 128, 1024 })
    {
        SyncedPad desk ({ .bpm = 126.0, .seconds = 200.0 }, 120.0, 4, block);
        auto& engine = desk.host->engine();
        desk.playPause (0);
        desk.render (2.0);
        desk.pads().padPress (0, 127);
        const auto settle = [&] (double seconds, const char* what, double lead = 0.0)
        {
            desk.render (1.0);
            const auto from = desk.host->position();
            desk.render (seconds);
            EXPECT_LT (desk.distanceFrom (from, lead), 1.0) << what << " " << block;
            EXPECT_GE (desk.clicksFrom (from), static_cast<size_t> (seconds * 1.9)) << what << " " << block;
        };
        settle (5.0, "plays");
        {
            const CallbackLock lock (engine.getCallbackLock(), "test");
            desk.deck (0).jumpTo (50.07 * desk.rate);
        }
        settle (5.0, "jumped");
        engine.setParameter (CommandTable::numberOf ("LOOP_A"), 1.0f);
        settle (8.0, "loops");
        engine.setParameter (CommandTable::numberOf ("LOOP_A"), 1.0f);
        settle (4.0, "left the loop");
        engine.setParameter (CommandTable::numberOf ("PITCH_BEND_NUDGE_PLUS_A"), 1.0f);
        desk.render (1.0);
        engine.setParameter (CommandTable::numberOf ("PITCH_BEND_NUDGE_PLUS_A"), 0.0f);
        settle (4.0, "nudged");
        engine.transport.setReverse (0, true);
        settle (5.0, "reverse", 2.5); // a click that runs backwards swells
        engine.transport.setReverse (0, false);
        settle (5.0, "forward again");
    }
}

TEST (SamplerSync, WhatPlaysToItsEndBeginsWithItsBeginAndIsInTimeFromTheNextBeatOn)
{
    for (const auto mode : { oneShotMode, retriggerMode })
        for (const double pressed :
             { 1.13, 2.27, 9.28, 11.5 }) // late, just before a beat, wherever its number stands
        {
            SyncedPad desk ({ .bpm = 126.0 }, 120.0, 16);
            desk.pads().setPlayMode (0, mode);
            desk.playPause (0);
            desk.render (pressed);
            const auto from = desk.host->position();
            desk.pads().padPress (0, 127);
            desk.render (9.0);
            const auto& clicks = desk.clicks[desk.sampler];
            ASSERT_GE (clicks.size(), 15u) << pressed;
            EXPECT_NEAR (clicks[0], static_cast<double> (from), 10.0) << pressed;
            EXPECT_LE (clicks.size(), 17u) << pressed;
            EXPECT_LT (desk.distanceFrom (from + static_cast<int64_t> (1.1 * desk.rate)), 1.0) << pressed;
            EXPECT_FALSE (desk.pads().desk.slots[0].playing != 0) << pressed;
        }
}

TEST (SamplerSync, AHitThatIsNoLoopKeepsItsTempo)
{
    SyncedPad desk ({ .bpm = 120.0 }, 120.0);
    const auto hit = Signals::noise (4000, 1);
    SampleFacts facts;
    facts.bpm = 400.0;
    facts.beats = 4.0;
    putSample (desk.pads(), 1, hit, facts);
    std::vector<float> bus;
    desk.host->sink = [&] (const float* const* channels, int frames)
    { return bus.insert (bus.end(), channels[12], channels[12] + frames), true; };
    desk.playPause (0);
    desk.render (1.0);
    bus.clear();
    desk.pads().padPress (1, 127);
    desk.render (0.1);
    EXPECT_TRUE (std::equal (hit.begin(), hit.begin() + 3500, bus.begin()));
}

TEST (SamplerSync, FollowsAHostThatJumpsTurnsAndChangesItsTempo)
{
    for (const int block : { 128, 1024 })
    {
        SyncedPad desk (120.0, block);
        auto& transport = desk.host->transport();
        transport.play();
        desk.render (0.2);
        desk.pads().padPress (0, 127);
        const auto settle = [&] (double bpm, const char* what)
        {
            transport.setBpm (bpm);
            desk.render (1.0);
            const auto from = desk.host->position();
            const auto beat = *transport.getPosition()->getPpqPosition();
            desk.render (5.0);
            std::vector<double> beats;
            for (auto next = std::ceil (beat); next < beat + 5.0 * bpm / 60.0; ++next)
                beats.push_back (static_cast<double> (from) + (next - beat) * 60.0 / bpm * desk.rate);
            EXPECT_LT (desk.largest (desk.distances (desk.sampler, beats, from)), 1.0)
                << what << " " << block;
            EXPECT_GE (desk.clicksFrom (from) + 1, beats.size()) << what << " " << block;
        };
        settle (120.0, "plays");
        settle (126.5, "faster");
        transport.seek (61.37);
        settle (126.5, "jumped");
        for (int turn = 0; turn < 8; ++turn)
        {
            transport.seek (8 * 60.0 / 126.5);
            desk.render (60.0 / 126.5);
        }
        settle (126.5, "turned round a beat");
        for (int step = 0; step < 200; ++step)
        {
            transport.setBpm (126.5 - 0.1 * step);
            desk.render (0.05);
        }
        settle (106.6, "ramped");
    }
}

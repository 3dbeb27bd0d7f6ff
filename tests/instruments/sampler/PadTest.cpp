#include "SamplerFixture.h"

TEST (SamplerPad, AnswersPressesAndReleasesByItsMode)
{
    struct Case
    {
        SamplePlayMode mode;
        const char* hand;  ///< P press, R release, e the time to the sample's end
        const char* plays; ///< after each, 1 or 0
    };
    for (const auto& c :
         { Case { oneShotMode, "PRPRPeP", "1100101" }, Case { triggerMode, "PRPeeR", "101110" },
           Case { retriggerMode, "PRPRePR", "1111011" }, Case { loopMode, "PReePR", "111100" } })
    {
        SamplerRun run;
        putSample (run.sampler(), 3, Signals::noise (4410, 1));
        run.sampler().setPlayMode (3, c.mode);
        for (size_t i = 0; c.hand[i] != 0; ++i)
        {
            if (c.hand[i] != 'e')
                run.set ("SAMPLER_PLAY_PAD_4", c.hand[i] == 'P' ? 1.0f : 0.0f);
            run.render (c.hand[i] == 'e' ? 0.1 : 0.01);
            EXPECT_EQ (run.plays (3), c.plays[i] == '1') << c.mode << " " << i;
            EXPECT_EQ (run.get ("SAMPLER_PLAY_PAD_4"), run.plays (3) ? 1.0f : 0.0f);
        }
    }
}

TEST (SamplerPad, IsHeardToTheBitFromThePressOn)
{
    for (const int block : { 64, 1000, 4096 })
    {
        SamplerRun run (block);
        auto signal = Signals::noise (20000, 7);
        putSample (run.sampler(), 0, signal);
        run.render (0.1);
        run.taken();
        run.set ("SAMPLER_PLAY_PAD_1");
        run.render (0.6);
        const auto heard = run.taken();
        for (size_t i = 0; i < signal.size() - 200; ++i)
            ASSERT_EQ (heard[i], signal[i]) << i;
        EXPECT_EQ (Signals::peak (std::span (heard).subspan (signal.size())), 0.0);
        EXPECT_FALSE (run.plays (0));
    }
}

TEST (SamplerPad, MakesNoClickWhateverItsPressesDo)
{
    for (const double hertz : { 60.0, 220.0, 800.0 })
    {
        SamplerRun run;
        // Ends in mid-wave: start, seam and end are steps of their own.
        const auto signal = toneFrom (std::numbers::pi / 2, 0.2001, hertz);
        const auto own = roughness (signal);
        putSample (run.sampler(), 0, signal);
        for (const auto mode : { oneShotMode, triggerMode, retriggerMode, loopMode })
        {
            run.sampler().setPlayMode (0, mode);
            for (const auto& [value, seconds] : { std::pair { 1.0f, 0.05 },
                                                  { 1.0f, 0.013 },
                                                  { 0.0f, 0.001 },
                                                  { 1.0f, 0.0007 },
                                                  { 1.0f, 0.5 },
                                                  { 0.0f, 0.02 },
                                                  { 1.0f, 0.3 },
                                                  { 0.0f, 0.1 } })
            {
                run.set ("SAMPLER_PLAY_PAD_1", value);
                run.render (seconds);
            }
            run.sampler().padPress (0, 127);
            run.render (0.05);
            run.sampler().clearSlot (0);
            run.render (0.1);
            putSample (run.sampler(), 0, signal);
            EXPECT_LT (roughness (run.taken()), own + 0.006) << mode << " " << hertz;
        }
    }
}

TEST (SamplerPad, ChangesItsModeInMidSoundWithoutAClick)
{
    // The last two places lie in the fades of the end and of the seam.
    for (const double seconds : { 0.05, 0.1, 0.1985, 0.201 })
        for (const bool isSynced : { false, true })
            for (const auto& [before, after] : { std::pair { oneShotMode, loopMode },
                                                 { retriggerMode, triggerMode },
                                                 { loopMode, oneShotMode },
                                                 { loopMode, triggerMode } })
            {
                SamplerRun run (16);
                const auto signal = toneFrom (std::numbers::pi / 2, 0.2, 60.0);
                SampleFacts facts;
                facts.beatStart = 2000; // what plays to its end goes further than a loop
                facts.beatEnd = before == oneShotMode ? 4000 : 8820;
                facts.bpm = 119.0;
                putSample (run.sampler(), 0, signal, facts);
                run.sampler().setPlayMode (0, before);
                run.sampler().setPadSync (0, isSynced);
                run.sampler().padPress (0, 127);
                run.render (seconds);
                const auto wasPlaying = run.plays (0);
                run.sampler().setPlayMode (0, after);
                run.render (0.25);
                const auto goesRound = after == loopMode || after == triggerMode;
                EXPECT_EQ (run.plays (0), wasPlaying && goesRound);
                EXPECT_LT (roughness (run.taken()), roughness (signal) + 0.006)
                    << before << " to " << after << " at " << seconds << (isSynced ? " synced" : "");
            }
}

TEST (SamplerPad, IsHeardToTheBitWhereItsModeChangesFarFromAnyEdge)
{
    SamplerRun run;
    const auto signal = toneFrom (0.3, 0.5);
    putSample (run.sampler(), 0, signal);
    run.sampler().padPress (0, 127);
    for (const auto mode : { oneShotMode, loopMode, retriggerMode, triggerMode })
    {
        run.sampler().setPlayMode (0, mode);
        run.render (0.1);
    }
    const auto heard = run.taken();
    for (size_t i = 300; i < heard.size(); ++i)
        ASSERT_NEAR (heard[i], signal[i], 1.0e-6) << i;
}

TEST (SamplerPad, KeepsAnAttackThatItsSampleBeginsWith)
{
    SamplerRun run;
    std::vector<float> click (2000);
    for (size_t i = 0; i < 50; ++i)
        click[i] = 0.9f * std::pow (-0.8f, static_cast<float> (i));
    putSample (run.sampler(), 0, click);
    run.sampler().setPlayMode (0, loopMode);
    run.set ("SAMPLER_PLAY_PAD_1");
    run.render (0.2);
    const auto heard = run.taken();
    for (size_t turn = 0; turn < 4; ++turn)
        EXPECT_FLOAT_EQ (heard[turn * click.size()], click[0]) << turn;
}

TEST (SamplerPad, AHitThatIsCutOnItsAttackComesOutWhole)
{
    const auto at = [] (int i, double hertz, double seconds)
    {
        const auto t = i / 44100.0;
        return static_cast<float> (0.8 * std::exp (-t / seconds)
                                   * std::cos (2.0 * std::numbers::pi * hertz * t));
    };
    for (const auto& [hertz, seconds] :
         { std::pair { 0.0, 0.008 }, { 55.0, 0.12 }, { 180.0, 0.05 }, { 3000.0, 0.03 } })
    {
        SamplerRun run;
        std::vector<float> hit (22050);
        for (int i = 0; i < 22050; ++i)
            hit[static_cast<size_t> (i)] = at (i, hertz, seconds);
        putSample (run.sampler(), 0, hit);
        run.set ("SAMPLER_PLAY_PAD_1");
        run.render (0.2);
        EXPECT_TRUE (std::equal (hit.begin(), hit.begin() + 8000, run.bus.begin())) << hertz;
    }
}

TEST (SamplerPad, PlaysAnyRateAtItsPitch)
{
    for (const uint32_t fileRate : { 22050u, 48000u, 96000u })
    {
        SamplerRun run;
        SampleFacts facts;
        facts.sampleRate = fileRate;
        putSample (run.sampler(), 0, Signals::sine (1000.0, fileRate, static_cast<int> (fileRate)), facts);
        run.set ("SAMPLER_PLAY_PAD_1");
        run.render (0.9);
        const auto heard = run.taken();
        const auto fit = Signals::fitSine (std::span (heard).subspan (4000, 20000), run.rate, 1000.0);
        EXPECT_NEAR (fit.frequency, 1000.0, 0.05);
        EXPECT_NEAR (fit.amplitude, 0.5, 0.01);
    }
}

TEST (SamplerPad, LevelMonitorVelocityAndLimiter)
{
    SamplerRun run;
    putSample (run.sampler(), 0, std::vector<float> (44100, 0.8f));
    run.sampler().setPlayMode (0, loopMode);
    run.set ("SAMPLER_PLAY_PAD_1");
    run.render (0.1);
    EXPECT_FLOAT_EQ (run.bus.back(), 0.8f);
    EXPECT_EQ (run.monitor.back(), 0.0f);
    run.set ("SAMPLER_PFL");
    run.set ("SAMPLER_MASTER_VOLUME_RESET");
    run.render (0.1);
    EXPECT_FLOAT_EQ (run.bus.back(), 0.4f);
    EXPECT_NEAR (run.monitor.back(), 0.8f, 0.01f);
    EXPECT_NEAR (run.slot (0).peakLeft, 0.8, 1e-6);

    run.set ("SAMPLER_MASTER_VOLUME", 1.0f);
    run.slot (0).gain = 1.0;
    run.render (0.3);
    EXPECT_FLOAT_EQ (run.bus.back(), 1.6f);
    EXPECT_LE (Signals::peak (run.master), 1.0);

    run.slot (0).gain = 0.5;
    run.set ("SAMPLER_PLAY_PAD_1");
    run.sampler().setFollowsVelocity (0, true);
    run.set ("SAMPLER_PLAY_PAD_1", 64.0f);
    run.render (0.2);
    EXPECT_FLOAT_EQ (run.bus.back(), 0.8f * 64 / 127);
}

TEST (SamplerPad, CopiesClearsAndIgnoresIndexesThatThereAreNot)
{
    SamplerRun run;
    auto& sampler = run.sampler();
    for (const int none : { -1, 17, 1000 })
    {
        sampler.padPress (none, 127);
        sampler.clearSlot (none);
        sampler.copySlot (0, none);
        sampler.loadSample (none, run.folder.file ("x.wav"));
        sampler.ghostRecordToPad (0, none, 7);
    }
    putSample (sampler, 5, Signals::noise (3000, 1), { .bpm = 100.0 });
    sampler.setPlayMode (5, loopMode);
    sampler.copySlot (5, 5);
    sampler.copySlot (7, 5);
    EXPECT_EQ (run.slot (5).lengthFrames, 3000);
    sampler.copySlot (5, 6);
    EXPECT_EQ (run.slot (6).playMode, loopMode);
    EXPECT_EQ (run.slot (6).bpm, 100.0);
    EXPECT_TRUE (std::equal (run.slot (5).buffer.right(), run.slot (5).buffer.right() + 3000,
                             run.slot (6).buffer.right()));
    sampler.clearSlot (6);
    EXPECT_TRUE (run.slot (6).isEmpty());
    EXPECT_EQ (run.slot (6).playMode, oneShotMode);
    sampler.padPress (6, 127);
    run.render (0.1);
    EXPECT_FALSE (run.plays (6));
    EXPECT_EQ (Signals::peak (run.bus), 0.0);
}

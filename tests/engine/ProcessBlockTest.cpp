#include "EngineFixture.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

namespace
{
struct FixedPlayHead : juce::AudioPlayHead
{
    juce::Optional<PositionInfo> getPosition() const override { return position; }
    juce::Optional<PositionInfo> position;
};

}

TEST (ProcessBlock, WithoutTracksAllOutputsAreExactSilence)
{
    EngineFixture fixture;
    juce::AudioBuffer<float> buffer (14, 512);
    for (int c = 0; c < 14; ++c)
        juce::FloatVectorOperations::fill (buffer.getWritePointer (c), 0.7f, 512);
    for (int block = 0; block < 4; ++block)
    {
        fixture.process (buffer);
        EXPECT_EQ (buffer.getMagnitude (0, 512), 0.0f);
    }
}

TEST (ProcessBlock, DecksSoundOnTheirPairsAndTheMasterIsTheirSum)
{
    EngineFixture fixture;
    for (int d = 0; d < deckCount; ++d)
    {
        fixture.loadNoise (d, 2 + d);
        fixture.deck (d).place (1000.0 * d);
        fixture.engine->setParameter (1 + d, 1.0f);
        fixture.engine->setParameter (261 + d, 0.4f); // the sum stays below the limiter
    }
    const auto out = fixture.render (20'000);
    for (int side = 0; side < 2; ++side)
    {
        std::vector<float> sum (20'000);
        for (int d = 0; d < deckCount; ++d)
        {
            EXPECT_GT (Signals::rms (EngineFixture::channel (out, 4 + 2 * d + side)), 0.01) << d;
            for (size_t i = 0; i < sum.size(); ++i)
                sum[i] += out.getSample (4 + 2 * d + side, static_cast<int> (i));
        }
        const auto late = static_cast<size_t> (fixture.engine->limiter.latency());
        for (size_t i = late; i < sum.size(); ++i)
            ASSERT_NEAR (out.getSample (side, static_cast<int> (i)), sum[i - late], 1e-5);
        EXPECT_EQ (Signals::peak (EngineFixture::channel (out, 2 + side)), 0.0); // nothing on Monitor
        EXPECT_EQ (Signals::peak (EngineFixture::channel (out, 12 + side)), 0.0);
    }
    EXPECT_GT (fixture.engine->getParameter (1001), 0.0f);
    EXPECT_LE (fixture.engine->getParameter (1004), 1.0f);
}

TEST (ProcessBlock, LineThroughAddsTheChosenInputPair)
{
    EngineFixture fixture;
    auto& setup = fixture.engine->settings.deckSetup[2];
    setup.lineThrough = 1;
    setup.lineGain = 0.5;
    setup.inputPair = 1;
    fixture.render (8192); // the strip opens
    for (const int frames : { 256, 16'383, 16'384 })
    {
        juce::AudioBuffer<float> buffer (14, frames);
        for (int c = 0; c < 14; ++c)
            juce::FloatVectorOperations::fill (buffer.getWritePointer (c), 0.1f * static_cast<float> (c + 1),
                                               frames);
        fixture.process (buffer);
        // A block of 16384 or more brings no input. The effects' band split takes a moment to settle on a steady level.
        const auto heard = frames < 16'384 ? 1.0f : 0.0f;
        EXPECT_NEAR (buffer.getSample (8, frames - 1), heard * 0.15f, 1e-3);
        EXPECT_NEAR (buffer.getSample (9, frames - 1), heard * 0.2f, 1e-3);
        EXPECT_NEAR (buffer.getSample (0, frames - 1), heard * 0.15f, 1e-3);
        EXPECT_EQ (buffer.getSample (4, 0), 0.0f);
    }
}

TEST (ProcessBlock, EffectsKeepTheirDecksTempoAtAnyRate)
{
    EngineFixture fixture;
    fixture.loadNoise (1, 1);
    fixture.set ("EFFECT_ON_3_GROUP_B"); // the delay, half a beat
    fixture.set ("FX_DRY_WET_GROUP_B", 1.0f);
    auto& setup = fixture.engine->settings.deckSetup[1];
    setup.lineThrough = 1;
    setup.lineGain = 1.0;
    setup.inputPair = 0;
    for (const auto& [rate, bpm] : { std::pair { 44100.0, 128.0 }, { 96000.0, 100.0 }, { 44100.0, 100.0 } })
    {
        fixture.engine->setRateAndBufferSizeDetails (rate, 512);
        fixture.deck (1).marks.bpm = bpm;
        juce::AudioBuffer<float> out (14, 512);
        int64_t loudest = 0, frame = -51'200;
        for (float level = 0.0f; frame < 51'200; frame += 512)
        {
            out.clear();
            out.setSample (0, 0, frame == 0 ? 1.0f : 0.0f);
            fixture.process (out);
            for (int i = 0; i < 512; ++i)
                if (frame >= 0 && std::abs (out.getSample (6, i)) > level)
                {
                    level = std::abs (out.getSample (6, i));
                    loudest = frame + i;
                }
        }
        // The band split spreads the pulse a little.
        EXPECT_NEAR (static_cast<double> (loudest), 30.0 / bpm * rate, 3e-4 * rate) << rate << " " << bpm;
    }
}

TEST (ProcessBlock, BlocksOfAnySizeRun)
{
    EngineFixture fixture;
    fixture.loadNoise (0);
    fixture.set ("PLAY_PAUSE_A");
    for (const int frames : { 0, 1, 63, 16'383, 16'384, 40'000, 0 })
    {
        juce::AudioBuffer<float> buffer (14, frames);
        buffer.clear();
        const double before = fixture.deck().heardPosition();
        fixture.process (buffer);
        EXPECT_EQ (fixture.deck().heardPosition() > before, frames > 0);
    }
    juce::AudioBuffer<float> stereo (2, 64); // not our layout: silence, and no reach beyond it
    stereo.clear();
    fixture.process (stereo);
    EXPECT_EQ (stereo.getMagnitude (0, 64), 0.0f);
}

TEST (ProcessBlock, ARateChangeIsTakenUpAtTheNextBlock)
{
    EngineFixture fixture;
    fixture.loadNoise (0);
    fixture.set ("PLAY_PAUSE_A");
    fixture.render (10'240);
    fixture.engine->setRateAndBufferSizeDetails (88'200.0, 512);
    fixture.render (10'240);
    EXPECT_NEAR (fixture.deck().head.rate, 0.5, 1e-6);
}

TEST (ProcessBlock, ThePreviewSoundsOnTheMonitorAloneAndAtItsOwnPitch)
{
    EngineFixture fixture;
    const auto tone = Signals::sine (1000.0, 48000.0, 96'000);
    juce::AudioBuffer<float> audio (2, 96'000);
    for (int side = 0; side < 2; ++side)
        audio.copyFrom (side, 0, tone.data(), 96'000);
    const auto file = EncodedFiles::writeWav (audio, 48000.0, fixture.folder.file ("tone.wav"));
    ASSERT_TRUE (fixture.engine->preview.load (file.getFullPathName()));
    fixture.engine->preview.play();

    fixture.render (4096);
    const auto out = fixture.render (44'100);
    const auto heard = Signals::fitSine (EngineFixture::channel (out, 2), EngineFixture::rate, 1000.0);
    EXPECT_NEAR (heard.frequency, 1000.0, 0.1);
    EXPECT_NEAR (heard.amplitude, 0.5, 0.01);
    EXPECT_EQ (Signals::peak (EngineFixture::channel (out, 0)), 0.0);
}

TEST (ProcessBlock, TheHostsPositionIsTakenOrFallsBack)
{
    EngineFixture fixture;
    FixedPlayHead head;
    fixture.engine->setPlayHead (&head);
    const auto& host = fixture.engine->host;

    juce::AudioPlayHead::PositionInfo position;
    position.setBpm (97.5);
    position.setIsPlaying (true);
    position.setTimeInSeconds (3.0);
    position.setTimeSignature (juce::AudioPlayHead::TimeSignature { 7, 8 });
    head.position = position;
    fixture.render (64);
    EXPECT_EQ (host.bpm, 97.5);
    EXPECT_TRUE (host.hasRestarted);
    EXPECT_EQ (host.timeSigNumerator, 7);
    fixture.render (64);
    EXPECT_FALSE (host.hasRestarted);

    for (const double bad :
         { 0.0, -5.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity() })
    {
        position.setBpm (bad);
        head.position = position;
        fixture.render (64);
        EXPECT_EQ (host.bpm, 120.0);
    }
    head.position = juce::nullopt;
    fixture.render (64);
    EXPECT_EQ (host.bpm, 120.0);
    EXPECT_FALSE (host.isPlaying);
    EXPECT_EQ (host.timeSigNumerator, 4);
    EXPECT_EQ (fixture.engine->decks.hostBpm, 120.0);
    fixture.engine->setPlayHead (nullptr);
}

TEST (ProcessBlock, AnEngineWithoutAValidMasterIsRepairedAtItsStart)
{
    EngineFixture fixture;
    fixture.engine->settings.masterDeck = 9;
    fixture.makeEngine();
    EXPECT_EQ (fixture.engine->settings.masterDeck, 3);
    fixture.loadNoise (0);
    fixture.set ("PLAY_PAUSE_A");
    EXPECT_GT (fixture.render (10'000).getMagnitude (0, 10'000), 0.1f);
    EXPECT_EQ (fixture.engine->settings.masterDeck, 0);
}

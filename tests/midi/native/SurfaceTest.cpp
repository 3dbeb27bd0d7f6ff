#include "NativeFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::Contains;
using testing::IsEmpty;
using Bytes = FakeMidiBackend::Bytes;

namespace
{
constexpr int bcd2000 = 4, cmdMicro = 45, cmdXx1 = 47;

/** A model 47 whose pitch stands at its centre, a second after it was started. */
struct SliderFixture : NativeFixture
{
    SliderFixture() : NativeFixture (cmdXx1)
    {
        loadNoise (0);
        handle (0xe0, 0, 64); // the first messages tell where the slider stands
        later (1000);
    }

    void later (int ms) { renderedFrames += ms * 441 / 10; }

    /** Moves the slider to the place at which it asks for a pitch. @returns the deck's then */
    double slideTo (double pitch)
    {
        const auto position = static_cast<int> ((1.0 - pitch) * 16384.0);
        handle (0xe0, position % 128, position / 128);
        return deck().tempo.pitch;
    }
};
}

TEST (Surface, AWheelThatCountsFromZeroBendsByItsShareInBothDirections)
{
    NativeFixture fixture (bcd2000);
    fixture.loadNoise (0);
    fixture.set ("PLAY_PAUSE_A");
    const auto bend = [&] { return fixture.deck().head.bend; };
    fixture.handle (0xb0, 19, 1);
    EXPECT_NEAR (bend(), 0.03 / 127.0, 1e-12);
    fixture.handle (0xb0, 19, 127);
    EXPECT_NEAR (bend(), 0.0, 1e-12);
    fixture.handle (0xb0, 19, 66); // from 64 up, forward, which makes it faster
    EXPECT_NEAR (bend(), -2 * 0.03 / 127.0, 1e-12);
    fixture.handle (0xb0, 19, 64); // a step back
    EXPECT_NEAR (bend(), -0.03 / 127.0, 1e-12);
}

TEST (Surface, AWheelWithoutTouchScratchesTheStoppedDeckAndLetsItGoByItself)
{
    NativeFixture fixture (bcd2000);
    fixture.loadNoise (0);
    for (int step = 0; step < 20; ++step)
        fixture.handle (0xb0, 19, 74);
    EXPECT_EQ (fixture.get ("JOG_SCRATCH_ON_A"), 1.0f);
    EXPECT_GT (fixture.deck().head.jog, 0.0);
    fixture.render (44100);
    EXPECT_EQ (fixture.get ("JOG_SCRATCH_ON_A"), 0.0f);
    EXPECT_EQ (fixture.deck().head.jog, 0.0);
}

TEST (Surface, ASliderIsPickedUpAtThePitchAndFollowedWhileItMoves)
{
    SliderFixture fixture;
    ASSERT_NEAR (fixture.deck().tempo.pitch, 0.5, 1e-6);
    EXPECT_NEAR (fixture.slideTo (0.55), 0.5, 1e-6) << "far away, a second after the last move";
    EXPECT_NEAR (fixture.slideTo (0.505), 0.505, 1e-4);
    fixture.later (40);
    EXPECT_NEAR (fixture.slideTo (0.555), 0.555, 1e-4) << "0.05 away, 40 ms after a move";
    fixture.later (60);
    EXPECT_NEAR (fixture.slideTo (0.605), 0.555, 1e-4) << "0.05 away, 60 ms after a move";
    fixture.loadNoise (1);
    fixture.set ("MASTER_B");
    fixture.set ("SYNC_LOCK_A");
    ASSERT_EQ (fixture.get ("SYNC_LOCK_A"), 1.0f);
    EXPECT_NEAR (fixture.slideTo (0.556), 0.555, 1e-4) << "Sync owns the pitch";
}

TEST (Surface, ModulesAboveChannelFiveAreNotHeard)
{
    NativeFixture fixture (cmdXx1);
    fixture.loadNoise (0);
    for (int channel = 5; channel < 16; ++channel)
        for (int data = 0; data < 128; ++data)
            for (const int kind : { 0x90, 0xb0, 0xe0 })
                fixture.handle (kind + channel, data, 127);
    EXPECT_EQ (fixture.get ("PLAY_PAUSE_A"), 0.0f);
    EXPECT_EQ (fixture.state().shift[SurfaceState::wholeSurface], 0);
    fixture.handle (0x90, 35, 127);
    EXPECT_EQ (fixture.get ("PLAY_PAUSE_A"), 1.0f);
}

TEST (Surface, CueHearsItsReleaseAndKnobsStepFromWhereTheyStand)
{
    NativeFixture fixture (cmdXx1);
    fixture.loadNoise (0);
    fixture.handle (0x90, 34, 127); // stores the place
    fixture.handle (0x80, 34, 0);
    fixture.handle (0x90, 34, 127); // plays while held
    EXPECT_EQ (fixture.get ("PLAY_PAUSE_A"), 1.0f);
    fixture.handle (0x80, 34, 64);
    EXPECT_EQ (fixture.get ("PLAY_PAUSE_A"), 0.0f);
    fixture.set ("FX_DRY_WET_GROUP_A", 0.3f);
    fixture.handle (0xb0, 0, 65);
    EXPECT_NEAR (fixture.get ("FX_DRY_WET_GROUP_A"), 0.35f, 1e-6f);
    fixture.handle (0x90, 0, 127);
    EXPECT_EQ (fixture.get ("FX_DRY_WET_GROUP_A"), 0.0f);
}

TEST (Surface, TouchScratchesOnlyInScratchModeOfItsDeck)
{
    NativeFixture fixture (cmdXx1);
    fixture.loadNoise (1);
    fixture.handle (0x91, 31, 127);
    EXPECT_EQ (fixture.get ("JOG_SCRATCH_ON_B"), 0.0f);
    fixture.handle (0x91, 27, 127);
    fixture.handle (0x91, 31, 127);
    EXPECT_EQ (fixture.get ("JOG_SCRATCH_ON_B"), 1.0f);
    fixture.handle (0xb1, 31, 66);
    EXPECT_NEAR (fixture.deck (1).head.jog, 2 * 0.04, 1e-9);
    fixture.handle (0x91, 31, 0);
    EXPECT_EQ (fixture.get ("JOG_SCRATCH_ON_B"), 0.0f);
}

TEST (Surface, LampsThatSayTheSameCostNothingUntilAModelPaintsAnew)
{
    NativeFixture fixture (cmdMicro);
    EXPECT_THAT (fixture.tick(), Contains (Bytes { 0x90, 23, 0 }));
    EXPECT_THAT (fixture.tick(), IsEmpty());
    fixture.loadNoise (0);
    fixture.set ("PLAY_PAUSE_A");
    EXPECT_THAT (fixture.tick(), Contains (Bytes { 0x90, 23, 1 }));
    fixture.control().selectController (cmdMicro);
    EXPECT_THAT (fixture.tick(), testing::SizeIs (6));
}

TEST (Surface, ADeviceThatComesBackIsWokenAndPainted)
{
    NativeFixture fixture (17);
    const Bytes wakeUp { 0xf0, 0x00, 0x20, 0x08, 0x00, 0x00, 0x63, 0x0e, 0x16, 0x40, 0x00, 0x01, 0xf7 };
    auto goodnight = wakeUp;
    goodnight[11] = 0;
    EXPECT_THAT (fixture.cables->takeSent (fixture.device), Contains (wakeUp));
    fixture.tick();
    fixture.cables->pull (fixture.device);
    fixture.look();
    fixture.device = fixture.cables->plug ("Surface");
    fixture.look();
    const auto sent = fixture.tick();
    EXPECT_THAT (sent, Contains (wakeUp));
    EXPECT_GE (sent.size(), 75u);
    fixture.control().selectController (0);
    EXPECT_THAT (fixture.cables->takeSent (fixture.device), Contains (goodnight));
}

TEST (Surface, PlayBlinksAtACueAndTextsAreSentWhenTheyChange)
{
    NativeFixture fixture (15);
    fixture.loadNoise (0);
    fixture.set ("CUE_A");
    std::vector<Bytes> sent;
    for (int i = 0; i < 24; ++i)
        for (auto& message : fixture.tick())
            sent.push_back (message);
    EXPECT_THAT (sent, Contains (Bytes { 0x90, 41, 127 }));
    EXPECT_THAT (sent,
                 Contains (Bytes { 0xf0, 0x00, 0x01, 0x02, 0x00, 3, 'G', 'A', 'I', 'N', 0xf7 }).Times (1));
    fixture.handle (0x90, 4, 127);
    EXPECT_THAT (fixture.tick(), Contains (Bytes { 0xf0, 0x00, 0x01, 0x02, 0x00, 4, 'F', 'X', ' ', 'D', 'E',
                                                   'P', 'T', 'H', 0xf7 }));
}

#include "OfflineRun.h"
#include "mixer/MasterLimiter.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace
{
using namespace testing;

/** Far below what is heard, far above the noise that keeps signals from decaying into subnormals. */
constexpr float nothing = 1e-6f;

float largestDifference (const std::vector<float>& a, size_t fromA, const std::vector<float>& b, size_t fromB)
{
    float largest = 0.0f;
    for (; fromA < a.size() && fromB < b.size(); ++fromA, ++fromB)
        largest = std::max (largest, std::abs (a[fromA] - b[fromB]));
    return largest;
}

std::string secondsOf (int frame)
{
    return std::to_string (static_cast<double> (frame) / runRate);
}
}

TEST (SetPerformance, LinesTakeEffectAtTheirFrame)
{
    // Without the stretcher, which hands its sound out in pieces of its own.
    const auto playedAt = [] (int frame)
    {
        OfflineRun run;
        run.host->engine().settings.bypassStretcher = 1;
        run.play ("0 load A sweep.wav\n0 set SEEK_A 0.5\n" + secondsOf (frame) + " set PLAY_PAUSE_A 1\n"
                  + secondsOf (frame + 4000) + " end\n");
        EXPECT_EQ (run.master.size(), static_cast<size_t> (frame + 4000));
        return run.master;
    };

    constexpr int first = 6000;
    constexpr auto limiterFrames = static_cast<int> (MasterLimiter::lookAheadSeconds * runRate + 0.5);
    const auto reference = playedAt (first);
    EXPECT_GT (*std::max_element (reference.begin(), reference.end()), 0.1f);
    for (const int shift : { 1, 63, 500, 1024 })
    {
        const auto shifted = playedAt (first + shift);
        EXPECT_TRUE (std::all_of (shifted.begin(), shifted.begin() + first + shift,
                                  [] (float sample) { return sample == 0.0f; }));
        EXPECT_LT (largestDifference (reference, first, shifted, static_cast<size_t> (first + shift)),
                   nothing);
        const auto start = shifted.begin() + first + shift;
        EXPECT_TRUE (std::any_of (start, start + limiterFrames + 2,
                                  [] (float sample) { return std::abs (sample) > nothing; }))
            << "too late";
    }
}

TEST (SetPerformance, BlockSizeChangesNothing)
{
    constexpr const char* set = "0 load A sweep.wav\n"
                                "0 load B sweep.wav\n"
                                "0.1 set PLAY_PAUSE_A 1\n"
                                "0.333 set PITCH_A 0.2\n"
                                "0.35 set PLAY_PAUSE_B 1\n"
                                "0.5 set HOT_CUE_3_A 1\n"
                                "0.6 set PITCH_BEND_NUDGE_PLUS_B 1\n"
                                "0.8 set PITCH_BEND_NUDGE_PLUS_B 0\n"
                                "0.9 set JOG_SCRATCH_ON_B 1\n"
                                "0.95 set JOG_B 1 0.01 -0.8\n"
                                "1 set JOG_SCRATCH_ON_B 0\n"
                                "1.1 set HOT_CUE_3_A 1\n"
                                "1.2 print SEEK_A\n"
                                "1.2 print SEEK_B\n"
                                "1.5 end\n";
    OfflineRun reference (512);
    reference.play (set);
    ASSERT_EQ (reference.master.size(), static_cast<size_t> (1.5 * runRate));
    EXPECT_GT (*std::max_element (reference.master.begin(), reference.master.end()), 0.5f);
    for (const int blockFrames : { 64, 128, 1000 })
    {
        OfflineRun run (blockFrames);
        run.play (set);
        EXPECT_LT (largestDifference (reference.master, 0, run.master, 0), nothing) << blockFrames;
        EXPECT_EQ (run.printed, reference.printed) << blockFrames;
    }

    OfflineRun again (512);
    EXPECT_EQ (again.play (set).master, reference.master)
        << "two runs must give the same samples, bit for bit";
}

TEST (SetPerformance, AtItsOwnTempoATrackComesOutAsItsFileTimesAGain)
{
    constexpr int from = 2 * runRate, frames = runRate / 2, mostLate = 600;
    for (const std::string keyLock : { "", "0 set KEY_LOCK_A 1\n" })
    {
        OfflineRun run (128);
        run.play ("0 load A sweep.wav\n" + keyLock + "0 set PLAY_PAUSE_A 1\n3 end\n");
        const auto source = run.host->engine().decks.deck (0)->readSource();
        auto least = 1.0;
        for (int late = 0; late < mostLate; ++late)
        {
            double product = 0.0, power = 0.0, largest = 0.0;
            const auto file = [&] (int i) { return source.left[from + i - late] / 32768.0; };
            const auto heard = [&] (int i) { return double { run.master[static_cast<size_t> (from + i)] }; };
            for (int i = 0; i < frames; ++i)
            {
                product += heard (i) * file (i);
                power += file (i) * file (i);
            }
            for (int i = 0; i < frames && largest < least; ++i)
                largest = std::max (largest, std::abs (heard (i) - product / power * file (i)));
            least = std::min (least, largest);
        }
        EXPECT_LT (least, 0.25 / 32768.0) << "a quarter of the file's step; " << keyLock;
    }
}

TEST (SetPerformance, PrintsInOneFormat)
{
    OfflineRun run;
    run.play ("0 print CROSSFADER\n"
              "0.5 print 41\n"
              "0.5 set KEY_LOCK_A 1\n"
              "0.5 print KEY_LOCK_A\n"
              "0.5 set BALANCE_D 0.125\n"
              "0.5 set MASTER_B 1\n"
              "123.4567891 print 288\n"
              "123.5 print MASTER_B\n"
              "123.5 print 1002\n");
    EXPECT_THAT (run.printed, ElementsAre ("0.000000 CROSSFADER 0.500000", "0.500000 KEY_LOCK_A 1.000000",
                                           "0.500000 KEY_LOCK_A 0.000000", "123.456780 BALANCE_D 0.125000",
                                           "123.500000 MASTER_B 1.000000", "123.500000 LEVEL_B 0.000000"));
    EXPECT_TRUE (run.reported.empty());
}

TEST (SetPerformance, AControllerPlaysByTheRootsMappingAndItsLampsArePrinted)
{
    OfflineRun run;
    run.folder.file ("root")
        .getChildFile ("setup/default_midi_mapping.xml")
        .replaceWithText ("<midiMapping version='2000' name='' lamps='1'><controls>"
                          "<value id='277' status='176' data='7'/><value id='229' status='144' data='11'/>"
                          "</controls></midiMapping>");
    run.play ("0 print midi\n"
              "0.5 midi Pad 0xB0 7 127\n"
              "0.5 midi \"My Pad\" 0x90 11 127\n"
              "0.6 midi \"My Pad\" 0x80 11 64 # a release\n"
              "0.7 print CROSSFADER\n"
              "0.7 print EQ_HIGH_KILL_A\n"
              "0.7 print midi\n"
              "0.8 print midi\n");
    EXPECT_THAT (run.printed, ElementsAre ("0.000000 MIDI 90 0B 00", "0.000000 MIDI B0 07 40",
                                           "0.700000 CROSSFADER 1.000000", "0.700000 EQ_HIGH_KILL_A 1.000000",
                                           "0.700000 MIDI 90 0B 7F", "0.700000 MIDI B0 07 7F"));
}

TEST (SetPerformance, ScriptsHearControllersAndTheirTimersRunInRenderedTime)
{
    const auto perform = []
    {
        OfflineRun run;
        run.folder.file ("lamps.c").replaceWithText (
            "#include \"px_commands.h\"\n"
            "int ticks = 0; array<int> none;\n"
            "void OnMidiMessageReceived(const string &in name, int status, int data, int value) {\n"
            "  if(value == 0) none[0] = 1;\n"
            "  set(CROSSFADER, value / 127.0f); log(name + \" after \" + ticks);\n"
            "}\n"
            "void OnTimerCallback() { sendMidiMessage(0xB0, 7, ++ticks); }\n"
            "void OnStart() { sendMidiMessage(0x90, 1, 127); }\n"
            "void OnStop() { log(\"bye\"); }\n");
        run.folder.file ("broken.c").replaceWithText ("void OnStart( {}");
        run.play ("0.01 script lamps.c\n"
                  "0.06 midi \"My Pad\" 0xB0 9 127\n"
                  "0.1 midi Other 0xB1 9 64\n"
                  "0.11 midi Other 0xB1 9 0\n"
                  "0.2 print CROSSFADER\n"
                  "0.2 print midi\n"
                  "0.3 script broken.c\n");
        return std::pair { run.printed, run.reported };
    };
    const auto [printed, reported] = perform();
    EXPECT_THAT (printed,
                 ElementsAre ("0.060000 LOG My Pad after 1", "0.100000 LOG Other after 2",
                              "0.200000 CROSSFADER 0.503937", "0.200000 MIDI 90 01 7F",
                              "0.200000 MIDI B0 07 01", "0.200000 MIDI B0 07 02", "0.200000 MIDI B0 07 03",
                              "0.200000 MIDI B0 07 04", "0.300000 LOG bye"));
    EXPECT_THAT (reported, testing::Contains (AllOf (StartsWith ("0.110000 /"), HasSubstr ("(Ln 4, Col"),
                                                     HasSubstr ("OnMidiMessageReceived failed"))));
    EXPECT_THAT (reported, testing::Contains (AllOf (StartsWith ("0.300000 /"), HasSubstr ("broken.c"),
                                                     HasSubstr ("Error (Ln 1"))));
    EXPECT_EQ (perform().first, printed);
}

TEST (SetPerformance, ReportsWhatDidNotLoadAndGoesOn)
{
    OfflineRun run;
    run.folder.file ("broken.wav").replaceWithText ("this is no audio");
    run.play ("1 load B broken.wav\n2 load C notes.txt\n2 load D broken.wav nowait\n");
    const std::string refused = ": *** Load Error *** broken.wav The file is damaged or holds no audio.";
    EXPECT_THAT (run.reported, ElementsAre ("1.000000 deck B" + refused,
                                            StartsWith ("2.000000 deck C: nothing was loaded: /"),
                                            "2.000000 deck D" + refused));
    EXPECT_TRUE (run.finished);
}

TEST (SetPerformance, HostLinesDriveTheTransport)
{
    struct Case
    {
        const char* text;
        double seconds, beats;
        bool isPlaying;
    };
    OfflineRun run (300, true);
    EXPECT_EQ (run.host->engine().decks.isStandalone, 0);
    for (const auto& c : { Case { "0.5 end", 0.0, 0.0, false },
                           { "0.5 host play\n1 end", 0.5, 1.0, true },
                           { "1 host bpm 60\n1.5 end", 1.0, 1.5, true },
                           { "1.5 host stop\n2 end", 1.0, 1.5, false },
                           { "2 host seek 10\n2 end", 10.0, 10.0, false } })
    {
        run.play (c.text);
        const auto position = *run.host->transport().getPosition();
        EXPECT_NEAR (*position.getTimeInSeconds(), c.seconds, 1e-9) << c.text;
        EXPECT_NEAR (*position.getPpqPosition(), c.beats, 1e-9) << c.text;
        EXPECT_NEAR (static_cast<double> (*position.getTimeInSamples()), c.seconds * runRate, 0.5);
        EXPECT_EQ (position.getIsPlaying(), c.isPlaying) << c.text;
    }
}

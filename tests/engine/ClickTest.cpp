#include "EngineFixture.h"
#include "engine/CommandTable.h"
#include "shared/Signals.h"
#include "tracks/TrackIngest.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>

namespace
{
constexpr double rate = EngineFixture::rate;
constexpr float level = 0.36f;

/** A desk whose first deck lets a tone of its input through and is heard on master and monitor. */
class ToneDesk : public EngineFixture
{
public:
    explicit ToneDesk (double hertz) : step (2.0 * std::numbers::pi * hertz / rate)
    {
        engine->settings.deckSetup[0].lineThrough = 1;
        set ("PFL_A");
        set ("MONITOR_MIX", 0.25f);
        set ("MASTER_VOLUME", 0.8f);
        play (0.1);
    }

    /** Goes on with the tone. @returns the left channels of master and monitor, one after the other */
    std::vector<float> play (double seconds)
    {
        constexpr int block = 128;
        std::vector<float> master, monitor;
        for (int left = static_cast<int> (seconds * rate); left > 0; left -= block)
        {
            juce::AudioBuffer<float> audio (CPlatterdex::outputChannels, block);
            audio.clear();
            for (int i = 0; i < block; ++i, phase += step)
                for (const int side : { 0, 1 })
                    audio.setSample (side, i, level * static_cast<float> (std::sin (phase)));
            process (audio);
            for (auto* const out : { &master, &monitor })
            {
                const auto samples = channel (audio, out == &master ? 0 : 2);
                out->insert (out->end(), samples.begin(), samples.end());
            }
        }
        master.insert (master.end(), monitor.begin(), monitor.end());
        return master;
    }

private:
    double step, phase = 0.0;
};

/** The loudest 2 ms above 5 kHz in either half of a signal, in dB of the tone. */
double loudestClick (std::span<const float> signal)
{
    constexpr int half = 200, span = 88;
    std::vector<double> kernel;
    for (int i = -half; i <= half; ++i)
    {
        const auto x = 2.0 * 5000.0 / rate * i, turn = std::numbers::pi * i / half;
        const auto sinc = i == 0 ? 1.0 : std::sin (std::numbers::pi * x) / (std::numbers::pi * x);
        const auto blackman = 0.42 + 0.5 * std::cos (turn) + 0.08 * std::cos (2.0 * turn);
        kernel.push_back ((i == 0 ? 1.0 : 0.0) - 2.0 * 5000.0 / rate * sinc * blackman);
    }
    double loudest = 0.0;
    const auto length = signal.size() / 2;
    for (const auto& part : { signal.first (length), signal.last (length) })
    {
        double power = 0.0;
        std::vector<double> squares;
        for (size_t at = 0; at + kernel.size() <= part.size(); ++at)
        {
            double sum = 0.0;
            for (size_t tap = 0; tap < kernel.size(); ++tap)
                sum += kernel[tap] * part[at + tap];
            squares.push_back (sum * sum);
            power += squares.back() - (at >= span ? squares[at - span] : 0.0);
            loudest = std::max (loudest, power / span);
        }
    }
    return 10.0 * std::log10 (loudest / (level * level / 2.0) + 1e-12);
}

struct Gesture
{
    const char* command;
    float value = 1.0f;
};

/** One after the other, each from where the one before has led. */
constexpr Gesture gestures[] {
    { "VOLUME_A", 0.2f },
    { "VOLUME_A", 1.0f },
    { "GAIN_A", 0.2f },
    { "GAIN_A", 0.5f },
    { "CROSSFADER", 1.0f },
    { "PUNCH_A" },
    { "CUT_A" },
    { "CUT_A" },
    { "CROSSFADER", 0.5f },
    { "CROSSFADER_ASSIGN_RIGHT_A" },
    { "MASTER_VOLUME", 0.1f },
    { "MASTER_VOLUME", 1.0f },
    { "MONITOR_VOLUME", 0.1f },
    { "MONITOR_VOLUME", 1.0f },
    { "MONITOR_MIX", 1.0f },
    { "MONITOR_MIX", 0.0f },
    { "MONITOR_PHONE_SPLIT" },
    { "MONITOR_PHONE_SPLIT" },
    { "MONITOR_MIX", 0.5f },
    { "PFL_A" },
    { "PFL_A" },
    { "EQ_LOW_KILL_A" },
    { "EQ_LOW_KILL_A" },
    { "EQ_MID_KILL_A" },
    { "EQ_HIGH_KILL_A" },
    { "EQ_LOW_KILL_A" },
    { "EQ_HIGH_KILL_A" },
    { "EQ_MID_KILL_A" },
    { "EQ_LOW_KILL_A" },
    { "EQ_LOW_A", 0.0f },
    { "EQ_MID_A", 1.0f },
    { "EQ_HIGH_A", 0.0f },
    { "EQ_LOW_RESET_A" },
    { "EQ_MID_RESET_A" },
    { "EQ_HIGH_RESET_A" },
    { "FX_LOW_BAND_GROUP_A" },
    { "FX_MID_BAND_GROUP_A" },
    { "FX_LOW_BAND_GROUP_A" },
    { "FX_HIGH_BAND_GROUP_A" },
    { "FX_HIGH_BAND_GROUP_A" },
    { "FX_MID_BAND_GROUP_A" },
    { "FILTER_A", 0.3f },
    { "FILTER_A", 0.7f },
    { "FILTER_A", 0.5f },
};

constexpr double allowed = -50.0;

/** A desk whose first deck plays a tone from a track, with key lock on and a tempo of its own. */
class TrackDesk : public EngineFixture
{
public:
    explicit TrackDesk (double hertz)
    {
        constexpr int frames = 4 * 44'100;
        std::vector<int16_t> tone (frames);
        for (int i = 0; i < frames; ++i)
            tone[static_cast<size_t> (i)] =
                static_cast<int16_t> (32767.0 * level * std::sin (2.0 * std::numbers::pi * hertz * i / rate));
        TrackIngest (deck().trackTarget()).append (tone.data(), tone.data(), frames);
        deck().marks.cues[0] = 20'000.25;
        set ("PITCH_A", 0.6f);
        set ("PFL_A");
        engine->transport.seekFrames (0, 50'000.0);
        set ("PLAY_PAUSE_A");
        play (0.3);
    }

    /** @returns the left channels of master and monitor, one after the other */
    std::vector<float> play (double seconds)
    {
        const auto out = render (static_cast<int> (seconds * rate), 128);
        const auto master = channel (out, 0), monitor = channel (out, 2);
        std::vector<float> both (master.begin(), master.end());
        both.insert (both.end(), monitor.begin(), monitor.end());
        return both;
    }
};

/** Commands whose sound lies above the tone by itself. */
bool isLoudByItself (std::string_view constant)
{
    // A jog step of 1 halves the speed at once, which no hand does; overdrive distorts; patterns of pads raise the tone.
    return constant == "JOG_A" || constant == "MONITOR_OVERDRIVE" || constant.starts_with ("SLICEGATE_PAD_");
}

/** Commands that change the place or the speed of the reading; the others' ramps are heard best at the highest tone. */
bool changesReading (std::string_view constant)
{
    constexpr std::string_view beginnings[] { "PLAY_", "CUE_",   "SEEK_", "REWIND_", "HOT_CUE_1_",
                                              "KEY_",  "PITCH_", "LOOP_", "LEAP_",   "JOG_SCRATCH_" };
    return std::any_of (std::begin (beginnings), std::end (beginnings),
                        [constant] (auto each) { return constant.starts_with (each); });
}
}

TEST (Clicks, NoCommandMakesOneWhileATrackPlays)
{
    for (const auto hertz : { 60.0, 400.0, 2000.0 })
        for (int number = 1; number <= CommandTable::commandCount; ++number)
        {
            const auto command = CommandTable::find (number);
            const auto constant = CommandTable::constant (number);
            if (command.deck != 0 || CommandTable::isUnbuilt (number) || isLoudByItself (constant)
                || (hertz < 2000.0 && !changesReading (constant)))
                continue;
            TrackDesk desk (hertz);
            for (const auto value :
                 { command->kind == CommandKind::relative ? CommandCall::stepUp : 1.0f, 0.0f })
            {
                desk.engine->setParameter (number, value);
                EXPECT_LT (loudestClick (desk.play (0.05)), allowed)
                    << hertz << " Hz, " << constant << ' ' << value;
                desk.play (0.15);
            }
        }
}

TEST (Clicks, NoControlOfTheMixerMakesOne)
{
    for (const auto hertz : { 60.0, 400.0, 2000.0 })
    {
        ToneDesk desk (hertz);
        for (size_t i = 0; i < std::size (gestures); ++i)
        {
            desk.set (gestures[i].command, gestures[i].value);
            EXPECT_LT (loudestClick (desk.play (0.06)), allowed)
                << hertz << " Hz, gesture " << i << ": " << gestures[i].command << ' ' << gestures[i].value;
            desk.play (0.05);
        }
    }
}

TEST (Clicks, NoEffectMakesOneWhenItIsSwitchedChosenOrTurned)
{
    // The crusher and the distortion are made of steps.
    constexpr int kinds[] { 0, 1, 2, 3, 4, 5, 6, 9 };
    for (const auto hertz : { 60.0, 400.0, 2000.0 })
    {
        ToneDesk desk (hertz);
        desk.set ("FX_DRY_WET_GROUP_A", 1.0f);
        const auto expectSmooth = [&] (const std::string& command, float value, const std::string& what)
        {
            desk.set (command.c_str(), value);
            // A delayed sound arrives later: half a beat, the longest here, is a quarter of a second.
            EXPECT_LT (loudestClick (desk.play (0.3)), allowed) << hertz << " Hz, " << what << ' ' << command;
        };
        for (const auto kind : kinds)
        {
            const auto name = "effect " + std::to_string (kind);
            desk.set ("EFFECT_SELECT_1_GROUP_A", (static_cast<float> (kind) + 0.5f) / 10.0f);
            desk.play (0.3);
            expectSmooth ("EFFECT_ON_1_GROUP_A", 1.0f, name + " on:");
            expectSmooth ("FX_DRY_WET_GROUP_A", 0.3f, name);
            expectSmooth ("FX_DRY_WET_GROUP_A", 1.0f, name);
            expectSmooth ("EFFECT_ON_1_GROUP_A", 1.0f, name + " off:");
        }
        desk.set ("EFFECT_ON_1_GROUP_A");
        for (const auto kind : kinds)
            expectSmooth ("EFFECT_SELECT_1_GROUP_A", (static_cast<float> (kind) + 0.5f) / 10.0f,
                          "choosing " + std::to_string (kind));
    }
}

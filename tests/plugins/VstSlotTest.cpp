#include "mixer/insert/VstSlot.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

namespace
{
constexpr double rate = 44100.0;
constexpr int block = 256;

/** A plug-in of a few lines. */
struct FakePlugin : juce::AudioProcessor
{
    using Process = std::function<void (juce::AudioBuffer<float>&)>;

    FakePlugin (Process p, int inputs, int outputs)
        : AudioProcessor (
            BusesProperties()
                .withInput ("in", juce::AudioChannelSet::canonicalChannelSet (inputs), inputs > 0)
                .withOutput ("out", juce::AudioChannelSet::canonicalChannelSet (outputs), outputs > 0)),
          play (std::move (p))
    {
    }

    const juce::String getName() const override { return "fake"; }
    void prepareToPlay (double, int) override {}
    void releaseResources() override {}
    void processBlock (juce::AudioBuffer<float>& b, juce::MidiBuffer&) override
    {
        if (auto* const head = getPlayHead())
            position = head->getPosition();
        play (b);
    }
    bool isBusesLayoutSupported (const BusesLayout& layout) const override
    {
        return layout == getBusesLayout();
    }
    double getTailLengthSeconds() const override { return 0.0; }
    bool acceptsMidi() const override { return false; }
    bool producesMidi() const override { return false; }
    juce::AudioProcessorEditor* createEditor() override { return nullptr; }
    bool hasEditor() const override { return false; }
    int getNumPrograms() override { return 1; }
    int getCurrentProgram() override { return 0; }
    void setCurrentProgram (int) override {}
    const juce::String getProgramName (int) override { return {}; }
    void changeProgramName (int, const juce::String&) override {}
    void getStateInformation (juce::MemoryBlock&) override {}
    void setStateInformation (const void*, int) override {}

    Process play;
    juce::Optional<juce::AudioPlayHead::PositionInfo> position;
};

std::unique_ptr<HostedPlugin> hosted (FakePlugin::Process play, int inputs = 2, int outputs = 2,
                                      int latency = 0)
{
    auto fake = std::make_unique<FakePlugin> (std::move (play), inputs, outputs);
    fake->setLatencySamples (latency);
    return std::make_unique<HostedPlugin> (std::move (fake), rate, 100); // blocks come in parts
}

FakePlugin::Process gain (float factor)
{
    return [factor] (juce::AudioBuffer<float>& b) { b.applyGain (factor); };
}

FakePlugin::Process constant (float value)
{
    return [value] (juce::AudioBuffer<float>& b)
    {
        for (int c = 0; c < b.getNumChannels(); ++c)
            juce::FloatVectorOperations::fill (b.getWritePointer (c), value, b.getNumSamples());
    };
}

/** Delays by the length of a line. */
FakePlugin::Process echo (std::vector<float>& line)
{
    return [&line, at = size_t { 0 }] (juce::AudioBuffer<float>& b) mutable
    {
        for (int i = 0; i < b.getNumSamples(); ++i, at = (at + 1) % line.size())
        {
            const auto late = std::exchange (line[at], b.getSample (0, i));
            b.setSample (0, i, late);
            b.setSample (1, i, late);
        }
    };
}

/** A slot that plays a tone. */
struct Bench
{
    Bench() { slot.setSampleRate (rate); }

    void put (HostedPlugin* plugin) { slot.put (plugin, lock); }

    /** Plays blocks; the left side is kept. */
    std::vector<float> play (int blocks)
    {
        std::vector<float> out;
        for (int i = 0; i < blocks; ++i)
        {
            std::vector<float> left (tone.begin() + place, tone.begin() + place + block), right = left;
            place = (place + block) % (static_cast<int> (tone.size()) - block);
            slot.follow (onMaster);
            if (const auto met = slot.processVstSlot (left.data(), right.data(), block, time, drive);
                met != PluginFault::none)
                faults.push_back (met);
            out.insert (out.end(), left.begin(), left.end());
        }
        return out;
    }

    juce::CriticalSection lock;
    VstSlot slot;
    VstSlotDrive drive;
    DeckTime time { 128.0, 2.5, true };
    bool onMaster = false;
    std::vector<PluginFault> faults;
    int place = 0;
    const std::vector<float> tone =
        Signals::sine (rate / block * 2.0, rate, 256 * 400, 0.5); // two periods a block
    const double level = 0.5 / std::sqrt (2.0), step = Signals::largestStep (tone);
};

constexpr int settled = 8; // blocks; the fades take 5 ms
}

TEST (VstSlot, MixesAsInsertAndAsSend)
{
    struct Case
    {
        bool insert, on;
        double wet, factor;
    };
    for (const auto& [insert, on, wet, factor] :
         { Case { true, true, 1.0, 3.0 }, Case { true, true, 0.0, 1.0 }, Case { true, true, 0.5, 2.0 },
           Case { false, true, 1.0, 4.0 }, Case { false, true, 0.0, 1.0 }, Case { false, false, 1.0, 1.0 } })
    {
        Bench bench;
        const auto plugin = hosted (gain (3.0f));
        bench.slot.isInsert = insert;
        bench.slot.setOn (on);
        bench.slot.dryWet = wet;
        bench.put (plugin.get());
        bench.play (settled);
        EXPECT_NEAR (Signals::rms (bench.play (4)), bench.level * factor, 1e-4) << insert << on << wet;
        bench.slot.clear (bench.lock);
    }
}

TEST (VstSlot, TellsThePluginTheTimeOfItsDeck)
{
    Bench bench;
    const auto plugin = hosted (gain (1.0f));
    bench.put (plugin.get());
    bench.play (2);
    const auto position = static_cast<FakePlugin&> (*plugin->processor).position;
    ASSERT_TRUE (position.hasValue());
    EXPECT_EQ (*position->getBpm(), 128.0);
    EXPECT_EQ (*position->getPpqPosition(), 2.5);
    EXPECT_TRUE (position->getIsPlaying());
}

TEST (VstSlot, SwitchesWithoutAStep)
{
    Bench bench;
    bench.slot.isInsert = 1;
    bench.slot.dryWet = 1.0;
    const auto first = hosted (gain (-1.0f)), second = hosted (gain (1.5f));
    const std::vector<std::function<void()>> hands {
        [&] { bench.put (first.get()); },
        [&] { bench.put (second.get()); },
        [&] { bench.slot.setOn (false); },
        [&] { bench.slot.setOn (true); },
        [&] { bench.slot.dryWet = 0.2; },
        [&] { bench.slot.isInsert = 0; },
        [&] { bench.onMaster = true; },
        [&]
        {
            bench.put (first.get());
            bench.put (second.get());
        },
        [&] { bench.put (nullptr); },
    };
    bench.play (1);
    for (size_t i = 0; i < hands.size(); ++i)
    {
        auto heard = bench.play (1);
        hands[i]();
        const auto after = bench.play (settled);
        heard.insert (heard.end(), after.begin(), after.end());
        EXPECT_LT (Signals::largestStep (heard), 2.5 * bench.step + 0.02) << i;
    }
    EXPECT_TRUE (bench.slot.isOnMaster());
    EXPECT_FALSE (bench.slot.uses (*first, bench.lock) || bench.slot.uses (*second, bench.lock));
    EXPECT_NEAR (Signals::rms (bench.play (2)), bench.level, 1e-4)
        << "an empty slot leaves the deck as it is";
}

TEST (VstSlot, LetsTheDrySignalWaitForThePlugin)
{
    for (const int latency : { 100, VstSlot::maxCompensated, VstSlot::maxCompensated + 1 })
    {
        Bench bench;
        bench.slot.isInsert = 1;
        bench.slot.dryWet = 0.5;
        std::vector<float> line (static_cast<size_t> (latency));
        const auto plugin = hosted (echo (line), 2, 2, latency);
        bench.put (plugin.get());
        bench.play (20);
        const auto fit = Signals::fitSine (bench.play (8), rate, rate / block * 2.0);
        const auto isCompensated = latency <= VstSlot::maxCompensated;
        EXPECT_TRUE (!isCompensated || std::abs (fit.amplitude - 0.5) < 0.01)
            << latency << ": " << fit.amplitude;
        bench.slot.clear (bench.lock);
    }
}

TEST (VstSlot, GivesAnEchoNoAbruptBeginningToRepeat)
{
    Bench bench;
    bench.slot.isInsert = 1;
    bench.slot.dryWet = 1.0;
    std::vector<float> line (static_cast<size_t> (8 * block));
    const auto plugin = hosted (echo (line));
    bench.place = block / 8; // the tone's peak
    bench.put (plugin.get());
    EXPECT_LT (Signals::largestStep (bench.play (16)), 2.5 * bench.step);
    bench.slot.clear (bench.lock);
}

TEST (VstSlot, TakesAPluginOutThatFailsAndSaysSoOnce)
{
    struct Case
    {
        FakePlugin::Process play;
        PluginFault fault;
        double level; ///< of the output afterwards, 1 the dry signal
    };
    const auto nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    for (const auto& [play, fault, level] :
         { Case { constant (nan), PluginFault::notANumber, 1.0 },
           Case { constant (inf), PluginFault::notANumber, 1.0 },
           Case { gain (10000.0f), PluginFault::tooLoud, 1.0 },
           Case { [] (juce::AudioBuffer<float>&) { throw 1; }, PluginFault::threw, 1.0 },
           Case { constant (1e-40f), PluginFault::none, 0.0 }, Case { gain (1.0f), PluginFault::none, 1.0 } })
    {
        Bench bench;
        bench.slot.isInsert = 1;
        bench.slot.dryWet = 1.0;
        const auto plugin = hosted (play);
        bench.put (plugin.get());
        const auto heard = bench.play (settled);
        EXPECT_LE (Signals::peak (heard), static_cast<double> (SignalGuard::highestLevel));
        EXPECT_EQ (bench.faults.size(), fault == PluginFault::none ? 0u : 1u);
        EXPECT_EQ (bench.slot.fault(), fault);
        EXPECT_EQ (bench.slot.isOn(), fault == PluginFault::none);
        EXPECT_NEAR (Signals::rms (bench.play (4)), bench.level * level, 1e-4);
        bench.slot.setOn (true); // tries it again
        bench.play (settled);
        EXPECT_EQ (bench.faults.size(), fault == PluginFault::none ? 0u : 2u);
        const auto other = hosted (gain (1.0f));
        bench.put (other.get());
        EXPECT_TRUE (bench.slot.isOn()) << "the fault was the other one's";
        bench.slot.clear (bench.lock);
    }
}

TEST (VstSlot, FadesABadSignalOutFromItsLastGoodSample)
{
    SignalGuard guard;
    std::vector<float> left (200, 0.8f), right (200, -0.8f);
    left[50] = std::numeric_limits<float>::quiet_NaN();
    float* const pair[] { left.data(), right.data() };
    EXPECT_EQ (guard.run (pair, 200), PluginFault::notANumber);
    EXPECT_EQ (left[49], 0.8f);
    EXPECT_LT (Signals::largestStep (left), 0.02);
    EXPECT_EQ (left[150], 0.0f);
    EXPECT_EQ (right[150], 0.0f);
}

TEST (VstSlot, FollowsASmartKnobAndReturnsToTheHand)
{
    Bench bench;
    bench.slot.isInsert = 1;
    bench.slot.dryWet = 1.0;
    const auto plugin = hosted (gain (3.0f));
    bench.put (plugin.get());
    struct Case
    {
        VstSlotDrive drive;
        double factor;
    };
    for (const auto& [drive, factor] :
         { Case { {}, 3.0 }, Case { { 0.5, {}, {} }, 1.0 }, Case { { 0.49, {}, {} }, 3.0 },
           Case { { {}, 0.0, {} }, 1.0 }, Case { {}, 3.0 } })
    {
        bench.drive = drive;
        bench.play (settled);
        EXPECT_NEAR (Signals::rms (bench.play (2)), bench.level * factor, 1e-4);
    }
    bench.slot.clear (bench.lock);
}

TEST (VstSlot, GivesAParameterToASmartKnobAndBackToTheHand)
{
    Bench bench;
    const auto plugin = hosted (gain (1.0f));
    auto* const parameter = new juce::AudioParameterFloat ("p", "p", 0.0f, 1.0f, 0.25f); // the plug-in's
    plugin->processor->addParameter (parameter);
    bench.put (plugin.get());
    bench.slot.assign (1, parameter, bench.lock);
    struct Case
    {
        std::optional<double> driven;
        double hand;
        float value;
    };
    for (const auto& [driven, hand, value] :
         { Case { {}, 0.25, 0.25f }, Case { 0.75, 0.25, 0.75f }, Case { 0.75, 0.5, 0.75f },
           Case { {}, 0.5, 0.5f }, Case { {}, 1.0, 1.0f } })
    {
        bench.drive.params[1] = driven;
        bench.slot.paramValues[1] = hand;
        bench.play (settled);
        EXPECT_FLOAT_EQ (parameter->get(), value);
    }
    bench.slot.clear (bench.lock);
}

TEST (HostedPlugin, AdaptsToTheChannelsThatThereAre)
{
    struct Case
    {
        int inputs, outputs;
        bool fits;
    };
    for (const auto& [inputs, outputs, fits] :
         { Case { 1, 1, true }, Case { 0, 2, true }, Case { 2, 6, true }, Case { 2, 0, false },
           Case { 40, 2, false }, Case { 32, 32, true }, Case { 2, 33, false } })
    {
        const auto plugin = hosted (gain (1.0f), inputs, outputs);
        EXPECT_EQ (plugin->unfitness().isEmpty(), fits) << inputs << "/" << outputs;
        if (!fits)
            continue;
        std::vector<float> left (300, 0.5f), right (300, 0.25f), outLeft (300), outRight (300);
        const float* const in[] { left.data(), right.data() };
        float* const out[] { outLeft.data(), outRight.data() };
        EXPECT_EQ (plugin->process (in, out, 300), HostedPlugin::Outcome::played);
        EXPECT_EQ (outLeft[299], inputs == 0 ? 0.0f : inputs == 1 ? 0.375f : 0.5f);
        EXPECT_EQ (outRight[299], inputs == 0 ? 0.0f : inputs == 1 ? 0.375f : 0.25f);
    }
}

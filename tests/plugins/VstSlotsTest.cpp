#include "plugins/slot/VstSlots.h"
#include "../engine/EngineFixture.h"
#include "plugins/catalogue/PluginListFile.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <random>
#include <thread>

extern "C"
{
    __attribute__ ((weak)) void __rtsan_ensure_initialized();
}

namespace
{
const juce::File evil (PX_EVIL_PLUGINS);

juce::String pathOf (const char* behaviour)
{
    return evil.getChildFile (juce::String (behaviour) + ".so").getFullPathName();
}

/** The engine's messages. */
struct Messages : EngineListener
{
    void engineEvent (EngineEvent, int) override {}
    void engineMessage (const juce::String& text, int deck) override
    {
        all.add (juce::String (deck) + " " + text);
    }

    juce::StringArray all;
};

struct SlotsBench
{
    explicit SlotsBench (Pacing::Mode mode = Pacing::Mode::offline) : fixture (mode)
    {
        fixture.engine->listeners.add (messages);
        makeSlots();
    }

    ~SlotsBench()
    {
        slots.reset();
        fixture.engine->listeners.remove (messages);
    }

    void makeSlots()
    {
        slots.reset();
        VstSlots::Options options;
        options.scanner.program = juce::File (PX_SCANNER);
        options.scanner.disablePopups = true;
        options.hasMessageLoop = false;
        slots = std::make_unique<VstSlots> (*fixture.engine, options);
        fixture.engine->deliverMessages();
    }

    EngineFixture fixture;
    Messages messages;
    std::unique_ptr<VstSlots> slots;
};
}

TEST (VstSlots, LetInOnlyPluginsThatPassTheirTrial)
{
    struct Case
    {
        const char *behaviour, *fault;
    };
    SlotsBench bench;
    bench.fixture.render (512);
    for (const auto& [behaviour, fault] :
         { Case { "gain", "" }, Case { "crash_process", "It crashed when it was tried." },
           Case { "no_output", "is not known" }, Case { "many", "It has more than 32 channels." },
           Case { "mono", "" }, Case { "no_input", "" }, Case { "one_in_six_out", "" },
           Case { "huge_state", "" }, Case { "nothing", "is not known" },
           Case { "crash_scan", "is not known" }, Case { "nan", "" } })
    {
        const auto said = bench.slots->loadNow (0, pathOf (behaviour));
        EXPECT_TRUE (said.contains (fault) && said.isEmpty() == (*fault == 0)) << behaviour << ": " << said;
        EXPECT_EQ (bench.slots->name (0), said.isEmpty() ? behaviour : "Empty");
        bench.fixture.render (4096);
        bench.slots->serve();
    }
    // The last one passes and fails later, in the engine.
    EXPECT_EQ (bench.slots->name (0), "nan");
    bench.fixture.render (64 * 512);
    bench.fixture.engine->deliverMessages();
    EXPECT_TRUE (bench.messages.all.joinIntoString ("\n").contains (
        "*** Plug-in bypassed ***|It returned no numbers."));
    EXPECT_EQ (bench.fixture.get ("VST_ON_SLOT_A"), 0.0f);
}

TEST (VstSlots, PlayWithCommandsAndParameters)
{
    SlotsBench bench;
    auto& fixture = bench.fixture;
    fixture.loadNoise (0);
    ASSERT_EQ (bench.slots->loadNow (0, pathOf ("gain")), "");
    bench.slots->setParamIndex (0, 0, 0);
    fixture.set ("VST_INSERT_SEND_SIGNAL_ROUTING_SLOT_A");
    fixture.set ("VST_DRY_WET_SLOT_A", 1.0f);
    fixture.set ("PLAY_PAUSE_A");
    fixture.render (8192);
    const auto level = [&] { return Signals::rms (EngineFixture::channel (fixture.render (16384), 4)); };
    const auto unity = level();
    ASSERT_GT (unity, 0.001);
    fixture.set ("VST_PARAM_1_SLOT_A", 0.0f);
    fixture.render (4096);
    EXPECT_LT (level(), 1e-6);
    EXPECT_EQ (bench.slots->plugin (0)->getParameters()[0]->getValue(), 0.0f);

    // The plug-in's own hand moves the control.
    bench.slots->serve();
    bench.slots->plugin (0)->getParameters()[0]->setValue (0.5f);
    bench.slots->serve();
    EXPECT_EQ (fixture.get ("VST_PARAM_1_SLOT_A"), 0.5f);
    fixture.render (4096);
    EXPECT_GT (level(), unity / 2.0);

    // On the master it stands behind the deck's own output.
    fixture.engine->settings.deckSetup[0].vstOnMaster = 1;
    fixture.set ("VST_PARAM_1_SLOT_A", 0.0f);
    fixture.render (8192);
    const auto out = fixture.render (8192);
    EXPECT_GT (Signals::rms (EngineFixture::channel (out, 4)), unity / 4.0);
    EXPECT_LT (Signals::rms (EngineFixture::channel (out, 0)), 1e-6);
    fixture.set ("VST_ON_SLOT_A");
    fixture.render (8192);
    EXPECT_GT (Signals::rms (EngineFixture::channel (fixture.render (8192), 0)), 0.001);
}

TEST (VstSlots, KeepPluginsStatesAndChoices)
{
    SlotsBench bench;
    ASSERT_EQ (bench.slots->loadNow (1, pathOf ("gain")), "");
    ASSERT_EQ (bench.slots->loadNow (2, pathOf ("huge_state")), "");
    bench.slots->plugin (1)->getParameters()[1]->setValue (0.125f);
    bench.slots->setParamIndex (1, 1, 1);
    bench.fixture.set ("VST_DRY_WET_SLOT_B", 0.75f);
    bench.fixture.set ("VST_INSERT_SEND_SIGNAL_ROUTING_SLOT_C");
    bench.fixture.set ("VST_ON_SLOT_C");
    bench.fixture.render (1024);
    bench.makeSlots();
    EXPECT_EQ (bench.slots->name (0), "Empty");
    EXPECT_EQ (bench.slots->name (1), "gain");
    EXPECT_EQ (bench.slots->name (2), "huge_state");
    EXPECT_EQ (bench.slots->plugin (1)->getParameters()[1]->getValue(), 0.125f);
    EXPECT_EQ (bench.slots->paramIndex (1, 0), -1);
    EXPECT_EQ (bench.slots->paramIndex (1, 1), 1);
    EXPECT_EQ (bench.fixture.get ("VST_PARAM_2_SLOT_B"), 0.125f);
    EXPECT_EQ (bench.fixture.get ("VST_DRY_WET_SLOT_B"), 0.75f);
    EXPECT_EQ (bench.fixture.get ("VST_INSERT_SEND_SIGNAL_ROUTING_SLOT_C"), 1.0f);
    EXPECT_EQ (bench.fixture.get ("VST_ON_SLOT_C"), 0.0f);

    // One that is gone leaves its slot empty, says so, and is there again once it has come back.
    const auto known = bench.slots->known;
    const auto gain = known->find ("gain");
    known->clear();
    bench.makeSlots();
    EXPECT_EQ (bench.slots->name (1), "Empty");
    EXPECT_TRUE (
        bench.messages.all.joinIntoString ("\n").contains ("1 *** Error loading the VST plugin ***|gain|"));
    known->put (gain->file, { *gain });
    bench.makeSlots();
    ASSERT_EQ (bench.slots->name (1), "gain");
    EXPECT_EQ (bench.slots->plugin (1)->getParameters()[1]->getValue(), 0.125f);
    bench.slots->unload (1); // by a hand: for good
    bench.makeSlots();
    EXPECT_EQ (bench.slots->name (1), "Empty");
}

TEST (VstSlots, BlameThePluginOfWhichTheProgramDied)
{
    SlotsBench bench;
    ASSERT_EQ (bench.slots->loadNow (3, pathOf ("gain")), "");
    const auto setup = bench.fixture.engine->environment.folders.setup();
    const auto marker = setup.getChildFile ("vst_loading.txt");
    ASSERT_TRUE (marker.existsAsFile());
    const auto left = marker.loadFileAsString(); // as a program leaves it that is killed now
    bench.slots.reset();
    EXPECT_FALSE (marker.existsAsFile());
    marker.replaceWithText (left);
    bench.makeSlots();
    EXPECT_EQ (bench.slots->name (3), "Empty");
    EXPECT_TRUE (bench.messages.all.joinIntoString ("\n").contains (
        "3 *** Plug-in left out ***|The program ended while gain"));
    bench.makeSlots();
    EXPECT_EQ (bench.messages.all.size(), 1) << "it is said once";
}

TEST (SlotsFile, TakesAnyBytes)
{
    SavedSlots slots;
    slots[2].plugin = "VST-\"<&-1";
    slots[2].state.append ("\0\x01\xff", 3);
    const auto bytes = SlotsFile::write (slots);
    const auto read = SlotsFile::read (bytes);
    ASSERT_TRUE (read);
    EXPECT_EQ ((*read)[2].plugin, slots[2].plugin);
    EXPECT_EQ ((*read)[2].state, slots[2].state);
    for (size_t length = 0; length < bytes.size(); length += 7)
    {
        const auto cut = SlotsFile::read (bytes.substr (0, length));
        EXPECT_TRUE (!cut || (*cut)[0].dryWet == 0.5);
    }
    const auto odd = SlotsFile::read (
        "<vstSlots><slot deck='AB'/><slot deck='A' dryWet='nan' param1='-9'>!!</slot></vstSlots>");
    ASSERT_TRUE (odd);
    EXPECT_EQ ((*odd)[0].dryWet, 0.5);
    EXPECT_EQ ((*odd)[0].paramIndices[0], -1);
}

/** The thread sanitizer sees no race, the real-time sanitizer no wait of ours, and the bus no step beyond the fades. */
TEST (VstSlotsStress, PluginsComeAndGoWhileFourDecksPlay)
{
    if (__rtsan_ensure_initialized != nullptr)
        __rtsan_ensure_initialized();
    SlotsBench bench (Pacing::Mode::live);
    auto& fixture = bench.fixture;
    juce::AudioBuffer<float> audio (2, 44100);
    for (int i = 0; i < audio.getNumSamples(); ++i)
        for (int side = 0; side < 2; ++side)
            audio.setSample (side, i,
                             static_cast<float> (
                                 0.1 * std::sin (juce::MathConstants<double>::twoPi * 60.0 * i / 44100.0)));
    const auto tone = EncodedFiles::writeWav (audio, 44100.0, fixture.folder.file ("tone.wav"));
    const juce::StringArray plugins { pathOf ("gain"), pathOf ("delay"), pathOf ("mono"), "Empty" };
    for (int deck = 0; deck < deckCount; ++deck)
    {
        fixture.load (tone, deck);
        fixture.deck (deck).loops.in = 4410.0; // whole periods
        fixture.deck (deck).loops.out = 30870.0;
        fixture.deck (deck).loops.mode = manualLoop;
        fixture.deck (deck).play.on = 1;
        for (const auto& plugin : plugins)
            ASSERT_EQ (bench.slots->loadNow (deck, plugin), "");
    }
    const auto largestStep = [&fixture] (auto&& goesOn)
    {
        auto last = 0.0f, largest = 0.0f;
        for (int64_t n = 0; goesOn (n); ++n)
        {
            const auto out = fixture.render (512);
            for (const auto sample : EngineFixture::channel (out, 0))
                largest = std::max (largest, n > 0 ? std::abs (sample - std::exchange (last, sample)) : 0.0f);
            last = out.getSample (0, 511);
        }
        return largest;
    };
    fixture.render (100 * 512);
    const auto undisturbed = largestStep ([] (int64_t n) { return n < 200; });
    std::atomic<bool> done { false };
    auto largest = 0.0f;
    std::thread audioThread ([&] { largest = largestStep ([&done] (int64_t) { return !done; }); });
    std::mt19937 random (4);
    for (int i = 0; i < 250; ++i)
    {
        const auto deck = static_cast<int> (random() % 4u);
        EXPECT_EQ (bench.slots->loadNow (deck, plugins[static_cast<int> (random() % 4u)]), "");
        bench.slots->slot (deck).dryWet = random() % 101u / 100.0;
        bench.slots->slot (deck).isInsert = 1; // sends would add up
        fixture.engine->settings.deckSetup[static_cast<size_t> (deck)].vstOnMaster =
            static_cast<int8_t> (random() % 2u);
        bench.slots->setParamIndex (deck, 0, 0);
        bench.slots->serve();
    }
    done = true;
    audioThread.join();
    EXPECT_GT (undisturbed, 0.0f);
    EXPECT_LT (largest, 3.0f * undisturbed + 0.005f);
}

#include "measure/BenchEngine.h"
#include "measure/MusicLike.h"

#include "plugins/catalogue/PluginListFile.h"
#include "plugins/scan/ScanThread.h"
#include "plugins/slot/VstSlots.h"

#include <juce_events/juce_events.h>

#include <cstdio>
#include <optional>

// bench_plugin_table FOLDER...: scans folders of plug-ins, plays each plug-in in a slot, in a process of its own, and has it
// restored from the file of the slots; prints the table of docs/real-plugins.md.

namespace
{
constexpr int blockFrames = 512, childMs = 120'000;
constexpr double engineRate = 44100.0;
constexpr int mostChoices = 32; ///< of a parameter that goes by them
constexpr float aTenth =
    0.1f; ///< of the other parameters' ranges: at their ends gains add up to more than +60 dB
constexpr const char* oneWord = "--one";

juce::String inCell (const juce::String& text)
{
    return text.replace ("|", "/").replace ("\n", " ");
}

int blocksOf (double seconds)
{
    return static_cast<int> (seconds * engineRate / blockFrames);
}

/** The engine's last message. */
struct LastMessage : EngineListener
{
    void engineEvent (EngineEvent, int) override {}
    void engineMessage (const juce::String& message, int) override { text = message; }

    juce::String text;
};

/** An engine whose deck A plays music through its slot. */
struct Bench
{
    explicit Bench (const KnownPluginEntry& entry)
    {
        engine->listeners.add (said);
        engine.putTrack (0, MusicLike::make (4.0, engineRate), engineRate);
        engine.deck (0).play.on = 1;
        engine->vstSlots[0].isInsert = 1;
        engine->vstSlots[0].dryWet = 1.0;
        known->put (entry.file, { entry });
        makeSlots();
    }

    void makeSlots()
    {
        slots.reset();
        VstSlots::Options options;
        options.scanner = { .program = juce::File (PX_SCANNER), .disablePopups = true };
        options.hasMessageLoop = false;
        slots = std::make_unique<VstSlots> (*engine, options);
    }

    ~Bench()
    {
        slots.reset();
        engine->listeners.remove (said);
    }

    /** @returns the loudest sample of the deck's output */
    float play (double seconds)
    {
        auto peak = 0.0f;
        for (int i = 0; i < blocksOf (seconds); ++i)
        {
            engine.processBlock();
            peak = std::max (peak, engine.output().getMagnitude (0, blockFrames));
            juce::MessageManager::getInstance()->runDispatchLoopUntil (0);
            slots->serve();
        }
        return peak;
    }

    BenchEngine engine { true, engineRate, blockFrames };
    const std::shared_ptr<KnownPlugins> known =
        KnownPlugins::of (engine->environment.folders.setup().getChildFile ("vst_plugins_list.xml"));
    std::unique_ptr<VstSlots> slots;
    LastMessage said;
};

std::vector<float> valuesOf (juce::AudioProcessor& plugin)
{
    std::vector<float> values;
    for (const auto* parameter : plugin.getParameters())
        values.push_back (parameter->getValue());
    return values;
}

/** Moves all parameters and restores the slot as the next start does. @returns what came back, as the table's text */
juce::String restored (Bench& bench)
{
    auto* plugin = bench.slots->plugin (0);
    const auto before = valuesOf (*plugin);
    for (auto* parameter : plugin->getParameters())
    {
        const auto steps = parameter->getNumSteps();
        const auto isChoice = steps > 1 && steps <= mostChoices;
        const auto move = isChoice ? 1.0f / static_cast<float> (steps - 1) : aTenth;
        const auto value = parameter->getValue();
        parameter->setValueNotifyingHost (value + (value < 0.5f ? move : -move));
    }
    bench.play (0.2);
    const auto kept = valuesOf (*plugin);
    bench.play (0.2);
    const auto later = valuesOf (*plugin);

    bench.makeSlots();
    plugin = bench.slots->plugin (0);
    if (plugin == nullptr)
    {
        bench.engine->deliverMessages();
        return "none: " + inCell (bench.said.text.fromLastOccurrenceOf ("|", false, false));
    }
    bench.play (0.2);
    const auto now = valuesOf (*plugin);
    int counted = 0, same = 0;
    for (size_t i = 0; i < std::min (kept.size(), now.size()); ++i)
        // A parameter that did not move and a meter that moves by itself tell nothing.
        if (std::abs (kept[i] - before[i]) > 0.01f && kept[i] == later[i])
        {
            ++counted;
            same += std::abs (now[i] - kept[i]) < 1.0e-3f ? 1 : 0;
        }
    if (counted == 0)
        return "nothing to keep";
    return same == counted ? "all " + juce::String (counted)
                           : juce::String (same) + " of " + juce::String (counted);
}

/** Tries the plug-in of a list with one entry; prints the last columns of its row. */
int tryOne (const juce::File& list)
{
    const auto entries = PluginListFile::read (list.loadFileAsString().toStdString());
    if (!entries || entries->size() != 1)
        return 2;
    Bench bench (entries->front());
    if (const auto fault = bench.slots->loadNow (0, entries->front().description.createIdentifierString());
        fault.isNotEmpty())
        return std::printf ("no | | | %s\n", fault.fromFirstOccurrenceOf (": ", false, false).toRawUTF8()), 0;
    bench.play (0.1);
    const auto peak = bench.play (1.0);
    if (bench.engine->vstSlots[0].fault() != PluginFault::none)
        return std::printf ("yes | bypassed | | it returned no numbers or more than +60 dB\n"), 0;
    const auto* const heard = peak > 1.0e-5f ? "sound" : "silence";
    const auto state = restored (bench);
    return std::printf ("yes | %s | %s | \n", heard, state.toRawUTF8()), 0;
}

/** @returns the last columns of a plug-in's row */
juce::String resultOf (const KnownPluginEntry& entry, const juce::File& self)
{
    if (!entry.isUsable())
        return "no | | | " + inCell (entry.reason);
    const juce::TemporaryFile list (".xml");
    const auto text = PluginListFile::write ({ entry });
    list.getFile().replaceWithData (text.data(), text.size());
    juce::ChildProcess child;
    if (!child.start (juce::StringArray { self.getFullPathName(), oneWord, list.getFile().getFullPathName() },
                      juce::ChildProcess::wantStdOut))
        return "no | | | the trying program does not start";
    if (!child.waitForProcessToFinish (childMs))
        return child.kill(), "no | | | it did not end in two minutes";
    const auto line = juce::StringArray::fromLines (child.readAllProcessOutput().trimEnd());
    const auto last = line.isEmpty() ? juce::String() : line[line.size() - 1];
    return child.getExitCode() == 0 && last.contains (" | ") ? last : "no | | | the trying program crashed";
}

void scan (const std::shared_ptr<KnownPlugins>& known, const juce::FileSearchPath& folders)
{
    ScanThread::Options options;
    options.searchPaths = folders;
    options.scanner.process = { .program = juce::File (PX_SCANNER), .disablePopups = true };
    options.scanner.patience.skipMs = childMs / 2;
    ScanThread thread (known, options, [] (const ScanMessage&) {});
    thread.wait();
}
}

int main (int argc, char** argv)
{
    const juce::ScopedJuceInitialiser_GUI juce;
    if (argc == 3 && juce::String (argv[1]) == oneWord)
        return tryOne (juce::File (juce::String::fromUTF8 (argv[2])));
    juce::FileSearchPath folders;
    for (int i = 1; i < argc; ++i)
        folders.add (
            juce::File::getCurrentWorkingDirectory().getChildFile (juce::String::fromUTF8 (argv[i])));
    if (folders.getNumPaths() == 0)
        return std::puts ("usage: bench_plugin_table FOLDER..."), 2;
    const auto known = std::make_shared<KnownPlugins> (juce::File());
    scan (known, folders);

    std::puts ("| plug-in | format | maker | scanned | in/out | latency | loaded | heard | parameters "
               "restored | reason |");
    std::puts ("|---|---|---|---|---|---|---|---|---|---|");
    int count = 0, scanned = 0, loaded = 0, played = 0, kept = 0;
    for (const auto& entry : known->entries())
    {
        const auto result =
            resultOf (entry, juce::File::getSpecialLocation (juce::File::currentExecutableFile));
        const auto& plugin = entry.description;
        std::printf ("| %s | %s | %s | %s | %d/%d | %d | %s |\n", inCell (plugin.name).toRawUTF8(),
                     plugin.pluginFormatName.toRawUTF8(), inCell (plugin.manufacturerName).toRawUTF8(),
                     entry.isUsable() ? "ok" : wordOf (entry.state), plugin.numInputChannels,
                     plugin.numOutputChannels, entry.latency, result.trimEnd().toRawUTF8());
        std::fflush (stdout);
        ++count;
        scanned += entry.isUsable() ? 1 : 0;
        loaded += result.startsWith ("yes") ? 1 : 0;
        played += result.startsWith ("yes") && !result.contains ("bypassed") ? 1 : 0;
        kept += result.contains ("| all ") || result.contains ("nothing to keep") ? 1 : 0;
    }
    std::printf ("\n%d plug-ins, %d scanned, %d loaded, %d played, "
                 "%d came back with all that they were given.\n",
                 count, scanned, loaded, played, kept);
    return 0;
}

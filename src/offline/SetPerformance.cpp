#include "offline/SetPerformance.h"

#include "engine/CommandTable.h"
#include "engine/SettingChange.h"
#include "instruments/presets/SmartKnobLibrary.h"
#include "offline/SetControllers.h"
#include "plugins/slot/VstSlots.h"
#include "support/DecimalText.h"
#include "support/files/AudioFileTypes.h"

#include <cmath>

namespace
{
juce::String fixed (double value)
{
    return decimalText (value, 6);
}

/** Carries the lines of a set out, and the engine's messages over to the report. */
class Performer : private EngineListener
{
public:
    Performer (OfflineHost& h, const SetPerformance& p, const SetScript& script) : host (h), performance (p)
    {
        host.engine().listeners.add (*this);
        if (script.hasMidi())
            controllers = std::make_unique<SetControllers> (host);
        // A picture of the set has its own, which stay when the set is over.
        slots = VstSlots::of (host.engine());
        if (script.hasPlugins() && slots == nullptr)
        {
            ownSlots = std::make_unique<VstSlots> (
                host.engine(), VstSlots::Options { { performance.scanner, true }, false, false });
            slots = ownSlots.get();
        }
    }

    ~Performer() override { host.engine().listeners.remove (*this); }

    /** Renders up to a frame of the run, and has the scripts' timers run on the way.
        @returns false if the host's sink has ended it */
    bool renderTo (int64_t frame)
    {
        const auto nextTick = [this]
        { return controllers != nullptr ? controllers->nextTick() : std::nullopt; };
        for (auto tick = nextTick(); tick && *tick <= frame; tick = nextTick())
        {
            if (!host.render (*tick - host.position()))
                return false;
            controllers->tick();
            tellOfScripts();
        }
        return host.render (frame - host.position());
    }

    /** Has the scripts say their last. */
    void endScripts()
    {
        if (controllers == nullptr)
            return;
        controllers->end();
        tellOfScripts();
    }

    void operator() (const SetScript::Load& load)
    {
        const auto file = performance.folder.getChildFile (juce::String (load.path));
        if (!AudioFileTypes::matches (file))
        {
            report (load.deck,
                    "nothing was loaded: " + file.getFullPathName() + " has no extension of an audio file");
            return tellNotLoaded (file.getFullPathName());
        }
        loading[static_cast<size_t> (load.deck)] = file.getFullPathName();
        host.load (file, load.deck, load.waits);
    }

    void operator() (const SetScript::Sample& line)
    {
        const auto file = performance.folder.getChildFile (juce::String (line.path));
        auto& sampler = host.engine().sampler;
        sampler.loadSample (line.pad, file);
        sampler.waitUntilIdle();
        const auto& slot = *sampler.desk.find (line.pad);
        if (!slot.isEmpty())
            return;
        if (performance.report != nullptr)
            performance.report (now() + " pad " + juce::String (line.pad + 1) + ": nothing was loaded: "
                                + file.getFullPathName() + ": " + slot.texts().fault);
        tellNotLoaded (file.getFullPathName());
    }

    void operator() (const SetScript::Command& command)
    {
        host.engine().dispatch (command.number, command.value, command.arg1, command.arg2);
        host.engine().deliverMessages();
    }

    void operator() (const SetScript::Setting& line)
    {
        const auto setting = NamedSetting::find (line.name);
        if (setting.row->isText())
            changeSetting (host.engine(), setting, juce::String (line.text));
        else
            changeSetting (host.engine(), setting, line.value);
    }

    void operator() (const SetScript::Reverse& line)
    {
        host.engine().transport.setReverse (line.deck, line.on);
    }

    void operator() (const SetScript::Grid& line)
    {
        if (!host.engine().grids.read (line.deck, *line.reading))
            reportFault (line.deck, "The grid can't be read so.", {});
    }

    void operator() (const SetScript::Host& line)
    {
        auto& transport = host.transport();
        switch (line.action)
        {
        case SetScript::Host::Action::play:
            return transport.play();
        case SetScript::Host::Action::stop:
            return transport.stop();
        case SetScript::Host::Action::bpm:
            return transport.setBpm (line.value);
        case SetScript::Host::Action::seek:
            return transport.seek (line.value);
        }
    }

    void operator() (const SetScript::Preset& line)
    {
        const auto isPad = line.target == SetScript::Preset::Target::slicegate;
        auto& pads = host.engine().slicegates[static_cast<size_t> (line.deck)];
        auto& knobs = host.engine().smartKnobs;
        std::string sentence;
        if (const auto* id = std::get_if<int> (&line.source))
        {
            if (isPad)
                pads.loadFactoryPreset (*id, line.index);
            else
                sentence = SmartKnobLibrary::loadFactory (knobs, line.deck, line.index, *id);
            return reportFault (line.deck, sentence, {});
        }
        const auto file =
            performance.folder.getChildFile (juce::String (std::get<std::string> (line.source)));
        reportFault (line.deck,
                     isPad ? pads.importPreset (file, line.index)
                           : SmartKnobLibrary::loadFile (knobs, line.deck, line.index, file),
                     file.getFullPathName());
    }

    void operator() (const SetScript::Timecode& line)
    {
        auto& engine = host.engine();
        if (line.inputPair >= 0)
            engine.settings.deckSetup[static_cast<size_t> (line.deck)].inputPair =
                static_cast<int8_t> (line.inputPair);
        auto& deck = engine.timecodes[static_cast<size_t> (line.deck)];
        deck.setBrand (line.brand);
        deck.setMode (static_cast<TimecodeDeck::Mode> (line.mode));
        deck.renewDecoder(); // from the next frame on, not from the next block
    }

    void operator() (const SetScript::Plugin& line)
    {
        slots->serve();
        const juce::String name (juce::String::fromUTF8 (line.name.c_str()));
        const auto file = performance.folder.getChildFile (name);
        const auto fault = slots->loadNow (line.deck, file.exists() ? file.getFullPathName() : name);
        if (fault.isEmpty())
            return;
        report (line.deck, fault);
        tellNotLoaded (name);
    }

    void operator() (const SetScript::Print& line)
    {
        if (performance.print == nullptr)
            return;
        performance.print (now() + " " + CommandTable::constant (line.number) + " "
                           + fixed (static_cast<double> (host.engine().getParameter (line.number))));
    }

    void operator() (const SetScript::Midi& line)
    {
        controllers->play (line);
        tellOfScripts();
    }

    void operator() (const SetScript::Script& line)
    {
        const auto file = performance.folder.getChildFile (juce::String (line.path));
        if (!controllers->loadScript (file))
            tellNotLoaded (file.getFullPathName());
        tellOfScripts();
    }

    void operator() (const SetScript::PrintMidi&)
    {
        const auto sent = controllers->takeSent();
        if (performance.print != nullptr)
            for (const auto& message : sent)
                performance.print (now() + " MIDI " + message);
    }

    void operator() (const SetScript::Browse&) {} // for pictures, which know the script

    void operator() (const SetScript::End&) {}

private:
    void engineEvent (EngineEvent event, int deck) override
    {
        if (event == EngineEvent::loadFailed)
            tellNotLoaded (loading[static_cast<size_t> (deck)]);
    }

    void engineMessage (const juce::String& text, int deck) override
    {
        report (deck, text.replaceCharacter ('|', ' '));
    }

    /** @param path   of the file that was not loaded */
    void reportFault (int deck, const std::string& sentence, const juce::String& path)
    {
        if (sentence.empty())
            return;
        report (deck, sentence);
        tellNotLoaded (path);
    }

    void report (int deck, const juce::String& sentence)
    {
        if (performance.report != nullptr)
            performance.report (now() + " deck " + juce::String::charToString ('A' + deck) + ": " + sentence);
    }

    void tellNotLoaded (const juce::String& path)
    {
        if (performance.notLoaded != nullptr)
            performance.notLoaded (path);
    }

    void tellOfScripts()
    {
        for (const auto& entry : controllers->takeTold())
            if (const auto line = now() + " "; entry.kind != ScriptEntry::Kind::log)
            {
                if (performance.report != nullptr)
                    performance.report (line + entry.file + ": " + textOf (entry));
            }
            else if (performance.print != nullptr)
                performance.print (line + "LOG " + entry.text.replaceCharacters ("\r\n\t", "   "));
    }

    juce::String now() const
    {
        return fixed (static_cast<double> (host.position()) / host.engine().getSampleRate());
    }

    OfflineHost& host;
    const SetPerformance& performance;
    std::array<juce::String, deckCount> loading; ///< the path that each deck was given last
    std::unique_ptr<SetControllers> controllers; ///< of a set that has some
    std::unique_ptr<VstSlots> ownSlots;          ///< of a set that puts plug-ins into them
    VstSlots* slots = nullptr;
};
}

bool performSet (const SetScript& script, OfflineHost& host, const SetPerformance& performance)
{
    Performer performer (host, performance, script);
    for (const auto& event : script.events)
    {
        const int64_t frame = std::llround (event.seconds * host.engine().getSampleRate());
        if (!performer.renderTo (frame))
            return false;
        std::visit (performer, event.action);
    }
    host.waitForLoads(); // a refusal is worth its line, however late
    performer.endScripts();
    return true;
}

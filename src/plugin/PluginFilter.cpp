#include "plugin/PluginFilter.h"

#include "plugins/slot/VstSlots.h"
#include "session/LanguageChoice.h"
#include "session/Session.h"
#include "ui/CPlatterdexVstEditor.h"
#include "ui/WindowPrompts.h"
#include "ui/midi/MidiWindows.h"

#include <utility>

namespace
{
thread_local CPlatterdex* newestEngine = nullptr;

std::shared_ptr<Session> sessionOfProcess()
{
    return Session::shared (
        []
        {
            Session::Options options;
            options.folders = Folders::ofProcess();
            LanguageChoice::start (options.folders);
            options.prompts = std::make_shared<WindowPrompts>();
            return options;
        });
}

/** The engine of one instance, tied to the session that all instances of the process share. */
class PluginEngine final : public CPlatterdex
{
public:
    explicit PluginEngine (const std::shared_ptr<Session>& session)
        : CPlatterdex (worldOf (session)),
          tie (*session, *this)
    {
    }

private:
    static EngineWorld worldOf (const std::shared_ptr<Session>& session)
    {
        auto world = session->world();
        // A host that is promised an editor must get one: some crash on none.
        world.createEditor = [session] (CPlatterdex& engine)
        {
            return new CPlatterdexVstEditor (engine, session.get(), {},
                                             static_cast<PluginEngine&> (engine).midiWindows.pages());
        };
        return world;
    }

    SessionEngine tie;
    VstSlots slots { *this, {} };
    MidiSystem midi { *this, { .isInHost = true } };
    MidiWindows midiWindows { midi };
};
}

CPlatterdex* takeNewestEngine() noexcept
{
    return std::exchange (newestEngine, nullptr);
}

/** Makes the processor of an instance for the shell of any format. */
juce::AudioProcessor* JUCE_CALLTYPE createPluginFilter();
juce::AudioProcessor* JUCE_CALLTYPE createPluginFilter()
{
    newestEngine = new PluginEngine (sessionOfProcess());
    return newestEngine;
}

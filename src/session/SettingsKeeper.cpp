#include "session/SettingsKeeper.h"

#include "settings/SettingsFile.h"
#include "support/CallbackLock.h"
#include "support/language/Translate.h"

#include <atomic>

namespace
{
constexpr int lookMs = 1000;
constexpr Worker::Key newestState = 0;

/** Says once in a run that settings are not kept. On the writer's thread. */
void tellOfFault (CPlatterdex& engine)
{
    static std::atomic<bool> wasSaid { false };
    if (!wasSaid.exchange (true))
        engine.listeners.postText (
            "*** " + tr ("Preferences") + " ***|"
                + tr ("%1 can't be written.", engine.environment.folders.setup().getFullPathName()),
            0);
}
}

SettingsKeeper::SettingsKeeper (std::function<bool()> m) : mayWrite (std::move (m)) {}

SettingsKeeper::~SettingsKeeper()
{
    stopTimer();
    writer.wait();
}

void SettingsKeeper::add (CPlatterdex& engine)
{
    const std::scoped_lock lock (mutex);
    engines.push_back ({ &engine, {}, engine.settingsToKeep() });
    startTimer (lookMs);
}

void SettingsKeeper::remove (CPlatterdex& engine)
{
    const std::scoped_lock lock (mutex);
    std::erase_if (engines, [&engine] (const Kept& kept) { return kept.engine == &engine; });
    if (engines.empty())
        stopTimer();
    writer.wait();
}

void SettingsKeeper::timerCallback()
{
    const std::scoped_lock lock (mutex);
    for (auto& kept : engines)
    {
        saveMarks (kept);
        saveSettingsOf (kept);
        saveContentsOf (kept);
    }
}

void SettingsKeeper::saveMarks (Kept& kept)
{
    auto& world = kept.engine->decks;
    const auto known = kept.marks;
    {
        const CallbackLock lock (kept.engine->getCallbackLock(), "marks");
        for (size_t d = 0; d < known.size(); ++d)
            kept.marks[d] = world.decks[d]->marks;
    }
    for (size_t d = 0; d < known.size(); ++d)
        if (kept.marks[d] != known[d])
            world.requestSave (*world.decks[d]);
}

void SettingsKeeper::saveSettingsOf (Kept& kept)
{
    auto bytes = kept.engine->settingsToKeep();
    if (bytes == kept.written || !mayWrite())
        return;
    kept.written = std::move (bytes);
    // A failure is tried again at the next change.
    writer.post (newestState, { [bytes = kept.written, engine = kept.engine] (const std::stop_token&)
                                {
                                    if (!saveSettings (bytes, engine->environment.folders.setup()))
                                        tellOfFault (*engine);
                                } });
}

void SettingsKeeper::saveContentsOf (Kept& kept)
{
    auto& store = kept.engine->instrumentContents;
    if (const auto complaint = store.takeComplaint(); !complaint.empty())
        kept.engine->listeners.postText (
            "*** " + tr ("Pads and knobs") + " ***|" + juce::String::fromUTF8 (complaint.c_str()), 0);
    if (!store.hasChanged() || !mayWrite())
        return;
    for (auto& document : store.takeChanged())
        writer.post ({ [document = std::move (document), &store] (const std::stop_token&)
                       { store.write (document); } });
}

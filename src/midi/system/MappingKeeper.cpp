#include "midi/system/MappingKeeper.h"

#include "midi/mapping/MidiMappingFile.h"

MappingKeeper::MappingKeeper (const MidiMapping& m, const juce::File& f, std::function<bool()> w,
                              std::chrono::milliseconds p)
    : mapping (m),
      file (f),
      mayWrite (std::move (w)),
      period (p)
{
}

void MappingKeeper::start()
{
    kept = current();
    thread = std::jthread ([this] (const std::stop_token& stop) { run (stop); });
}

bool MappingKeeper::save()
{
    const std::scoped_lock sl (lock);
    if (!mayWrite())
        return true; // another program has the file, and has said so
    kept = current();
    return saveMidiMapping (mapping, file);
}

void MappingKeeper::run (const std::stop_token& stop)
{
    juce::Thread::setCurrentThreadName ("MIDI mapping");
    while (!stop.stop_requested())
    {
        std::unique_lock sl (lock);
        wake.wait_for (sl, stop, period, [] { return false; });
        const auto hasChanged = kept != current();
        sl.unlock();
        if (hasChanged && !stop.stop_requested())
            juce::ignoreUnused (
                save()); // tried again at the next change; the editor tells of it when it closes
    }
}

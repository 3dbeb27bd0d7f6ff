#include "session/PlayNotes.h"

namespace
{
constexpr int lookMs = 1000;
}

PlayNotes::PlayNotes (std::function<void (const juce::String&)> s) : started (std::move (s)) {}

void PlayNotes::add (CPlatterdex& engine)
{
    const std::scoped_lock lock (mutex);
    engines.push_back ({ &engine, {} });
    startTimer (lookMs);
}

void PlayNotes::remove (CPlatterdex& engine)
{
    const std::scoped_lock lock (mutex);
    std::erase_if (engines, [&engine] (const Watched& each) { return each.engine == &engine; });
    if (engines.empty())
        stopTimer();
}

void PlayNotes::timerCallback()
{
    for (const auto& path : takeStarted())
        started (path);
}

juce::StringArray PlayNotes::takeStarted()
{
    juce::StringArray paths;
    const std::scoped_lock lock (mutex);
    for (auto& watched : engines)
        for (size_t d = 0; d < watched.noted.size(); ++d)
        {
            const auto& deck = *watched.engine->decks.decks[d];
            auto& noted = watched.noted[d];
            if (deck.play.on == 0 && noted.isEmpty())
                continue;
            const auto path = deck.track.loadedFrames > 0 ? deck.texts().filePath : juce::String();
            if (path == noted)
                continue;
            noted = deck.play.on != 0 ? path : juce::String();
            if (noted.isNotEmpty())
                paths.add (noted);
        }
    return paths;
}

#include "session/PlayNotes.h"

#include <utility>

namespace
{
constexpr int lookMs = 1000;
}

PlayNotes::PlayNotes (std::function<void (const juce::String&)> l, std::function<void (const PlayedSong&)> s)
    : loaded (std::move (l)),
      started (std::move (s))
{
}

void PlayNotes::add (CPlatterdex& engine)
{
    const std::scoped_lock lock (mutex);
    engines.push_back ({ &engine, {}, {} });
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
    juce::StringArray nowLoaded;
    std::vector<PlayedSong> nowStarted;
    {
        const std::scoped_lock lock (mutex);
        for (auto& watched : engines)
            lookAt (watched, nowLoaded, nowStarted);
    }
    for (const auto& path : nowLoaded)
        loaded (path);
    for (const auto& song : nowStarted)
        started (song);
}

void PlayNotes::lookAt (Watched& watched, juce::StringArray& nowLoaded,
                        std::vector<PlayedSong>& nowStarted) const
{
    for (size_t d = 0; d < watched.noted.size(); ++d)
    {
        const auto& deck = *watched.engine->decks.decks[d];
        const auto texts = deck.track.loadedFrames > 0 ? deck.texts() : DeckPlayer::Texts();
        if (std::exchange (watched.loaded[d], texts.filePath) != texts.filePath
            && texts.filePath.isNotEmpty())
            nowLoaded.add (texts.filePath);
        if (deck.play.on == 0 && watched.noted[d].isEmpty())
            continue;
        if (texts.filePath == watched.noted[d])
            continue;
        watched.noted[d] = deck.play.on != 0 ? texts.filePath : juce::String();
        if (watched.noted[d].isNotEmpty())
            nowStarted.push_back ({ juce::Time::getCurrentTime(), static_cast<int> (d), texts.filePath,
                                    texts.title, texts.artist });
    }
}

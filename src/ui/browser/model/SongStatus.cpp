#include "ui/browser/model/SongStatus.h"

SongStatus::SongStatus (CPlatterdex& engine, std::function<bool (const juce::String&)> played)
    : watches { DeckWatch (engine, 0), DeckWatch (engine, 1), DeckWatch (engine, 2), DeckWatch (engine, 3) },
      wasPlayed (std::move (played))
{
}

bool SongStatus::look()
{
    auto next = held;
    for (size_t d = 0; d < watches.size(); ++d)
        next[d] = { watches[d]->loadedFrames > 0 || watches[d]->loading ? watches[d]->filePath
                                                                        : juce::String(),
                    watches[d]->playing };
    return std::exchange (held, next) != next;
}

std::optional<int> SongStatus::Sign::deck() const
{
    for (size_t d = 0; d < decks.size(); ++d)
        if (decks[d])
            return static_cast<int> (d);
    return {};
}

SongStatus::Sign SongStatus::of (const juce::String& path) const
{
    Sign sign;
    if (path.isEmpty())
        return sign;
    for (size_t d = 0; d < held.size(); ++d)
        if (held[d].path == path)
        {
            sign.decks[d] = true;
            sign.isPlaying = sign.isPlaying || held[d].isPlaying;
        }
    sign.wasPlayed = wasPlayed (path);
    return sign;
}

#include "session/AutomixByFit.h"

#include <utility>

AutomixByFit::AutomixByFit (std::shared_ptr<AutomixSource> l, Session& s, SimilarRoom& r)
    : list (std::move (l)),
      session (s),
      similar (r)
{
}

std::optional<juce::File> AutomixByFit::nextTrack()
{
    auto next = list->nextTrack();
    if (next && *next == juce::File() && last != juce::File() && similar.continuesAutomix())
        next = fitting();
    if (next && *next != juce::File())
    {
        last = *next;
        given.add (last.getFullPathName());
    }
    return next;
}

std::optional<juce::File> AutomixByFit::fitting()
{
    {
        const std::scoped_lock scope (lock);
        if (auto known = std::exchange (answer, std::nullopt))
            return known;
    }
    auto* const database = session.library();
    if (database == nullptr)
        return juce::File();
    if (!worker.isBusy())
        worker.post ({ [this, database, room = session.browser(), after = last, known = given,
                        weights = similar.weights(), sounds = similar.sounds] (const std::stop_token&) {
            search (*database, room != nullptr ? &room->history : nullptr, after, known, weights, *sounds);
        } });
    return {};
}

void AutomixByFit::search (SongDatabase& database, const PlayHistory* history, const juce::File& after,
                           const juce::StringArray& known, SimilarSongs::Weights weights,
                           SoundSession& sounds)
{
    SimilarSongs::Options options;
    options.limit = 1;
    options.weights = weights;
    options.isLeftOut = [&] (const juce::String& path)
    {
        return known.contains (path) || (history != nullptr && history->isPlayed (path))
               || !juce::File (path).existsAsFile();
    };
    const auto found = SimilarSongs::find (database, sounds, after.getFullPathName(), options);
    const std::scoped_lock scope (lock);
    answer = found.empty() ? juce::File() : juce::File (found.front().path);
}

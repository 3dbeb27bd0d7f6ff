#include "session/similar/SimilarSongs.h"

#include "session/similar/KeyText.h"
#include "support/language/Translate.h"

#include <algorithm>
#include <cmath>

juce::String SimilarSong::tempoChange() const
{
    if (!tempo.isKnown)
        return {};
    const auto percent = 100.0 * tempo.change;
    return (percent >= 0.05 ? "+" : "") + juce::String (percent, 1) + " %"
           + (tempo.octave < 0   ? " x1/2"
              : tempo.octave > 0 ? " x2"
                                 : "");
}

juce::String SimilarSong::reason() const
{
    juce::StringArray parts { tr ("%1 % alike", std::lround (100.0 * closeness)) };
    if (tempo.isKnown)
        parts.add (tr ("tempo %1", tempoChange()));
    if (keyRelation.isNotEmpty())
        parts.add (keyRelation);
    return parts.joinIntoString (", ");
}

namespace SimilarSongs
{
namespace
{
struct Names
{
    juce::String title, artist;

    bool isSame (const Names& other) const
    {
        return title.isNotEmpty() && artist.isNotEmpty() && title.equalsIgnoreCase (other.title)
               && artist.equalsIgnoreCase (other.artist);
    }
};

/** Texts that can't be read just now are taken for empty. */
Names namesOf (SongDatabase& database, int32_t song)
{
    Names names;
    juce::ignoreUnused (database.readField (SongField::title, song, names.title),
                        database.readField (SongField::artist, song, names.artist));
    return names;
}
}

Weights weightsOf (const juce::String& value)
{
    for (const auto& priority : priorities)
        if (value == priority.value)
            return priority.weights;
    return priorities[1].weights;
}

std::vector<SimilarSong> find (SongDatabase& database, SoundSession& sounds, const juce::String& path,
                               const Options& options)
{
    const auto asked = sounds.facts (path);
    if (!asked || options.limit == 0)
        return {};
    Names names;
    if (const auto id = database.idOfFilename (path); id >= 0)
        names = namesOf (database, id);

    // Some of an answer are left out: a longer one is asked for until enough are there or all were seen.
    SoundSession::Query query;
    query.tempoWeight = options.weights.tempo;
    query.keyWeight = options.weights.key;
    std::vector<SimilarSong> made;
    size_t seen = 0;
    for (size_t count = 2 * options.limit + 20; made.size() < options.limit; count *= 4)
    {
        query.count = static_cast<int> (std::min<size_t> (count, 1u << 30));
        const auto answer = sounds.similar (path, query);
        for (; seen < answer.size() && made.size() < options.limit; ++seen)
        {
            const auto& similar = answer[seen];
            const auto& other = similar.path;
            if (options.isLeftOut != nullptr && options.isLeftOut (other))
                continue;
            const auto id = database.idOfFilename (other);
            if (id < 0 || namesOf (database, id).isSame (names))
                continue;
            made.push_back ({ id, other, similar.facts, similar.closeness,
                              Fit::tempoRelation (asked->tempoBpm, similar.facts.tempoBpm),
                              KeyText::relation (asked->key, similar.facts.key) });
        }
        if (answer.size() < count)
            break;
    }
    return made;
}
}

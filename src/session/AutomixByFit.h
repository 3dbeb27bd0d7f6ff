#pragma once

#include "engine/AutomixSource.h"
#include "session/SimilarRoom.h"

#include <memory>
#include <mutex>
#include <optional>

/** Goes on where another source of automix has come to its end, if that is preferred: with the song of the library that
    fits the last one best and was neither played nor given in this session. Searches on a thread of its own: a question
    gives nothing at first, and the answer when it is asked again. Message thread. */
class AutomixByFit : public AutomixSource
{
public:
    /** @param session, similar   have to live as long as this */
    AutomixByFit (std::shared_ptr<AutomixSource> list, Session& session, SimilarRoom& similar);

    void begin() override { list->begin(); }
    std::optional<juce::File> nextTrack() override;

    /** Waits for the answer to the last question. */
    void wait() const { worker.wait(); }

private:
    std::optional<juce::File> fitting();
    void search (SongDatabase&, const PlayHistory*, const juce::File& after, const juce::StringArray& given,
                 SimilarSongs::Weights, SoundSession&);

    const std::shared_ptr<AutomixSource> list;
    Session& session;
    SimilarRoom& similar;
    juce::File last;         ///< given last, by the list or by fit
    juce::StringArray given; ///< all that were given
    std::mutex lock;         ///< of the answer
    std::optional<juce::File> answer;
    Worker worker { "automixByFit" }; ///< last: its jobs use all of the above
};

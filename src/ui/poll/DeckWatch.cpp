#include "ui/poll/DeckWatch.h"

#include "deck/DeckWorld.h"
#include "engine/CPlatterdex.h"
#include "ui/poll/PollClock.h"

#include <algorithm>

namespace
{
TrackPlaces placesOf (const DeckPlayer& deck)
{
    TrackPlaces places;
    if (deck.isEmpty())
    {
        places.cues.fill (emptyCue);
        return places;
    }
    for (size_t slot = 0; slot < places.cues.size(); ++slot)
        places.cues[slot] = deck.marks.cues[slot];
    places.currentCue = deck.play.currentCue;
    if (deck.marks.startPointOn != 0)
        places.startPoint = deck.marks.startPoint.get();
    if (deck.loops.inSet != 0)
        places.loopIn = deck.loops.in.get();
    if (deck.loops.outSet != 0)
        places.loopOut = deck.loops.out.get();

    using Loop = TrackPlaces::Loop;
    if (deck.loops.mode == beatLoop)
        places.loop = Loop { deck.loops.start, deck.loops.start + deck.beatLoopFrames(), true };
    else if (places.loopIn.has_value() && places.loopOut.has_value())
        places.loop = Loop { *places.loopIn, *places.loopOut, deck.loops.mode == manualLoop };
    return places;
}

GridNumbers gridOf (const DeckPlayer& deck)
{
    const auto fixed = deck.marks.fixedGrid != 0;
    return { deck.track.numBeats,
             deck.marks.downbeatIndex,
             deck.marks.downbeatPosition,
             fixed,
             deck.marks.bpm,
             fixed ? deck.track.loadedFrames.get() : 0,
             deck.track.sampleRate,
             deck.marks.tableStep,
             deck.marks.confidence };
}

DeckView viewOf (const DeckPlayer& deck, double pitchRange)
{
    DeckView view;
    auto texts = deck.texts();
    view.title = std::move (texts.title);
    view.artist = std::move (texts.artist);
    view.album = std::move (texts.album);
    view.filePath = std::move (texts.filePath);
    view.loadedFrames = deck.track.loadedFrames;
    view.loading = deck.isLoading != 0;
    view.trackFrames = view.loading && view.loadedFrames > 0
                           ? std::max (view.loadedFrames, deck.track.statedFrames.get())
                           : view.loadedFrames;
    view.key = deck.track.key;
    view.grid = gridOf (deck);
    view.canUndo = deck.edits.undoCount() > 0;
    view.canRedo = deck.edits.redoCount() > 0;

    view.position = deck.heardPosition();
    view.playing = deck.play.on != 0;
    view.reverse = deck.play.reverse != 0;
    view.scratching = deck.jog.scratchOn != 0;
    view.places = placesOf (deck);

    view.tempo = deck.tempo.factor;
    view.beatRatio = deck.sync.beatRatio;
    view.pitchShare = (deck.tempo.pitch - 0.5) * (deck.play.followsRecord != 0 ? 1.0 : pitchRange);
    view.pitchRange = pitchRange;
    view.semitones = deck.tempo.keyTuning;

    view.overview = deck.overview.get();
    view.samples = &deck.audioMemory;
    return view;
}
}

class DeckWatch::Shared : public PollClock::Source
{
public:
    Shared (CPlatterdex& e, int d) : engine (e), deck (d) { clock->add (*this); }
    ~Shared() override { clock->remove (*this); }

    bool look() override
    {
        auto next = viewOf (player(), engine.decks.pitchRange);
        const auto changed = next != view;
        view = std::move (next);
        return changed;
    }

    const DeckPlayer& player() const { return *engine.decks.deck (deck); }

    CPlatterdex& engine;
    const int deck;
    DeckView view;

    /** The snapshots of all engines of the process. */
    struct All
    {
        std::vector<std::weak_ptr<Shared>> list;

        std::shared_ptr<Shared> find (const CPlatterdex& engine, int deck)
        {
            std::erase_if (list, [] (const auto& entry) { return entry.expired(); });
            for (const auto& entry : list)
                if (auto found = entry.lock(); &found->engine == &engine && found->deck == deck)
                    return found;
            return nullptr;
        }
    };

private:
    const juce::SharedResourcePointer<All> all;
    const juce::SharedResourcePointer<PollClock> clock;
};

DeckWatch::DeckWatch (CPlatterdex& engine, int deck)
{
    const juce::SharedResourcePointer<Shared::All> all;
    shared = all->find (engine, deck);
    if (shared != nullptr)
        return;
    shared = std::make_shared<Shared> (engine, deck);
    all->list.push_back (shared);
}

int DeckWatch::deck() const noexcept
{
    return shared->deck;
}

const DeckView& DeckWatch::now() const noexcept
{
    return shared->view;
}

const DeckView& DeckWatch::look() const
{
    shared->look();
    return shared->view;
}

void DeckWatch::readBeats (double first, double last, std::vector<GridBeat>& into) const
{
    into.clear();
    const CallbackLock lock (shared->engine.decks.callbackLock, "beat marks");
    const auto grid = shared->player().grid();
    const auto anchor = grid.downbeatEntry(), count = grid.beatCount();
    for (auto entry = grid.firstEntryBeyond (first - 1.0); entry < count && into.size() < mostBeats; ++entry)
    {
        const auto frame = grid.beatAt (entry);
        if (frame > last)
            break;
        if ((entry - anchor) % 2 == 0)
            into.push_back ({ frame, entry - anchor });
    }
}

#include "deck/load/DeckLoader.h"

#include "analysis/files/AnalysisFile.h"
#include "deck/load/DeckAnalysis.h"
#include "deck/play/DeckBlock.h"
#include "deck/sync/MasterDeck.h"
#include "library/tags/ReadTags.h"
#include "support/files/AudioFileTypes.h"
#include "support/language/Translate.h"
#include "tracks/TrackFault.h"
#include "tracks/TrackMeasure.h"
#include "tracks/formats/StatedLength.h"
#include "tracks/similar/SoundSession.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace
{
constexpr Worker::Key loadKey = 0, measureKey = 1;
constexpr auto savePause = std::chrono::seconds (1);

/** A file whose header states this much more than it holds is cut. */
constexpr double shortByShare = 0.02, shortBySeconds = 2.0;

juce::String clockText (double seconds)
{
    const auto whole = static_cast<int> (seconds);
    return juce::String (whole / 60) + ":" + juce::String (whole % 60).paddedLeft ('0', 2);
}
}

namespace
{
/** The hearing of the deck's track, if how it sounds is still to be described. */
struct TrackSound
{
    explicit TrackSound (DeckPlayer& deck)
        : session (SoundSession::ofProcess()),
          path (deck.texts().filePath),
          listener (session != nullptr ? session->listenTo (path, deck.track.sampleRate)
                                       : std::unique_ptr<SoundListener>())
    {
    }

    /** @param bpm   0 without beats */
    void store (double bpm) const
    {
        if (listener != nullptr)
            juce::ignoreUnused (
                session->store (path, *listener, bpm)); // unwritten, it is known until the end
    }

    const std::shared_ptr<SoundSession> session;
    const juce::String path;
    const std::unique_ptr<SoundListener> listener;
};

/** Describes the sound of a track whose analysis was stored, where that is missing. */
void describeSound (DeckWorld& world, DeckPlayer& deck, const std::stop_token& stop)
{
    const TrackSound sound (deck);
    const auto goesOn = [&] (int)
    {
        world.pacing.pause();
        return !stop.stop_requested();
    };
    if (sound.listener != nullptr
        && feedTrack (*sound.listener, deck.audioMemory.left(), deck.audioMemory.right(),
                      deck.track.loadedFrames.get(), goesOn))
        sound.store (deck.track.numBeats > 0 ? deck.marks.bpm.get() : 0.0);
}
}

struct DeckLoader::Load
{
    SongRecord tags;
    bool isStored = false; ///< the track's analysis was found
};

DeckLoader::DeckLoader (DeckWorld& w, int deckIndex, const AdecSharedLibrary& library)
    : world (w),
      index (deckIndex),
      decoder (library),
      worker ("DeckLoader")
{
}

void DeckLoader::post (Worker::Job job)
{
    const std::lock_guard guard (requests);
    const auto number = ++newest;
    deck().isLoading = 1;
    worker.cancel (measureKey);
    const auto end = [this, number]
    {
        const std::lock_guard ended (requests);
        if (number == newest)
            deck().isLoading = 0;
    };
    worker.post (loadKey, { [run = std::move (job.run), end] (const std::stop_token& stop)
                            {
                                run (stop);
                                end();
                            },
                            [failed = std::move (job.failed), end] (const char* reason)
                            {
                                failed (reason);
                                end();
                            } });
}

void DeckLoader::load (const juce::File& file)
{
    // Before the job can say anything: a listener takes what follows for this load's.
    world.listeners.post (EngineEvent::loadBegan, index);
    post ({ [this, file] (const std::stop_token& stop) { run (file, stop); },
            [this, file] (const char* reason)
            {
                if (isPartial)
                    dropTrack();
                fail (file, reason);
            } });
}

void DeckLoader::unload()
{
    post ({ [this] (const std::stop_token&) { dropTrack(); }, [] (const char*) {} });
}

void DeckLoader::measureTempo (double nearBpm)
{
    if (deck().isLoading == 0 && !deck().isEmpty())
        worker.post (measureKey,
                     { [this, nearBpm] (const std::stop_token& stop) { measure (nearBpm, stop); } });
}

void DeckLoader::run (const juce::File& file, const std::stop_token& stop)
{
    Load load;
    readTags (file.getFullPathName(), load.tags);
    const auto hasBegun = decodeTrack (file, decoder, deck().trackTarget(),
                                       { world.pacing, [&] { return !stop.stop_requested(); },
                                         [&] (double rate) { replaceTrack (file, rate, load); },
                                         [&] { world.listeners.post (EngineEvent::waveformReady, index); } });
    if (stop.stop_requested())
    {
        isPartial = isPartial || hasBegun;
        return;
    }
    if (!hasBegun)
    {
        if (isPartial)
            dropTrack();
        return fail (file, faultOfTrack (file, decoder));
    }
    isPartial = false;
    deck().track.peak = deck().overview->peak.get();
    deck().track.statedFrames = 0;
    world.listeners.post (EngineEvent::trackLoaded, index);
    takeKey();
    tellShortened (file, statedSeconds (file, load.tags[SongColumn::duration].getDoubleValue()));
    if (!load.isStored)
        analyse (stop);
    else
        describeSound (world, deck(), stop);
    deck().analysisProgress = 0;
    if (stop.stop_requested())
        return;
    takeKey();
    tellGrid (world, deck());
    if (!load.isStored)
        saveAnalysis (world, deck());
}

/** Lets the deck know the key of its track, if anything has heard it. */
void DeckLoader::takeKey()
{
    if (const auto session = SoundSession::ofProcess(); session != nullptr)
        if (const auto facts = session->facts (deck().texts().filePath))
            deck().track.key = facts->key;
}

void DeckLoader::replaceTrack (const juce::File& file, double sampleRate, Load& load)
{
    dropTrack();
    isPartial = true;
    auto& target = deck();
    target.track.statedFrames =
        static_cast<int32_t> (std::clamp (load.tags[SongColumn::duration].getDoubleValue() * sampleRate, 0.0,
                                          static_cast<double> (PXAudioSampleBuffer::maxFrames)));
    const auto stored =
        world.beatmarks == juce::File() ? file : AnalysisFile::forTrack (world.beatmarks, file);
    target.setTexts ({ file.getFullPathName(), load.tags[SongColumn::title], load.tags[SongColumn::artist],
                       load.tags[SongColumn::album],
                       stored == file ? juce::String() : stored.getFullPathName() });
    load.isStored = loadAnalysis (world, target);
}

void DeckLoader::dropTrack()
{
    auto& target = deck();
    isPartial = false;
    if (!target.isEmpty())
        saveAnalysis (world, target);
    {
        const CallbackLock lock (world.callbackLock, "change of track");
        DeckBlock::leaveTrack (world, target);
        target.resetTrack();
        MasterDeck::choose (world, target);
    }
    target.overview->clear();
    target.setTexts ({});
    world.listeners.post (EngineEvent::trackLeft, index);
}

void DeckLoader::fail (const juce::File& file, const juce::String& reason)
{
    if (world.settings.automixOn != 0 && index < 2)
        deck().play.loadNext = 1;
    world.listeners.postText ("*** " + tr ("Load Error") + " ***|" + file.getFileName() + "|" + reason,
                              index);
    world.listeners.post (EngineEvent::loadFailed, index);
}

void DeckLoader::tellShortened (const juce::File& file, double stated)
{
    const auto seconds = deck().track.loadedFrames / deck().track.sampleRate;
    const auto tell = [&] (const juce::String& title, const juce::String& line)
    { world.listeners.postText ("*** " + title + " ***|" + file.getFileName() + "|" + line, index); };
    if (deck().track.loadedFrames >= PXAudioSampleBuffer::maxFrames)
        tell (tr ("Track Too Long"), tr ("Only its first %1 fit into memory.", clockText (seconds)));
    else if (stated - seconds > shortBySeconds && stated * (1.0 - shortByShare) > seconds)
        tell (tr ("Incomplete File"), tr ("It ends at %1 of %2.", clockText (seconds), clockText (stated)));
}

void DeckLoader::analyse (const std::stop_token& stop)
{
    auto& target = deck();
    const int frames = target.track.loadedFrames;
    const double rate = target.track.sampleRate;
    const auto before = untouchedAnalysisOf (world, target);
    const TrackSound sound (target);
    TrackMeasure measurement (rate, TrackAnalyser::isClip (frames, rate));
    measurement.setListener (sound.listener.get());
    const auto goesOn = [&] (int done)
    {
        target.analysisProgress = done;
        // As often as live audio needs at least, and twice as often where the preference asks for it.
        if (world.settings.lowPriorityAnalysis != 0 || (done / TrackAnalyser::blockFrames) % 2 == 1)
            world.pacing.pause();
        return !stop.stop_requested();
    };
    if (!feedTrack (measurement, target.audioMemory.left(), target.audioMemory.right(), frames, goesOn))
        return;
    auto found = before;
    found.beatMarks.emplace();
    found = measurement.finish (world.settings.tempoRangeIndex, std::move (found));
    if (stop.stop_requested())
        return;
    sound.store (found.beatMarks && !found.beatMarks->empty() ? found.tempoTracker : 0.0);
    applyWhereUntouched (world, target, before, std::move (found));
}

void DeckLoader::measure (double nearBpm, const std::stop_token& stop)
{
    auto& target = deck();
    const int frames = target.track.loadedFrames;
    const double rate = target.track.sampleRate;
    TrackAnalyser analyser (rate, TrackAnalyser::isClip (frames, rate));
    const auto goesOn = [&] (int done)
    {
        target.analysisProgress = done;
        if (world.settings.lowPriorityAnalysis != 0)
            world.pacing.pause();
        return !stop.stop_requested();
    };
    const auto isWhole =
        feedTrack (analyser, target.audioMemory.left(), target.audioMemory.right(), frames, goesOn);
    const auto tempo = isWhole ? analyser.finishNear (nearBpm) : 0.0;
    target.analysisProgress = 0;
    if (!isWhole || stop.stop_requested())
        return;
    if (tempo > 0.0)
    {
        const CallbackLock lock (world.callbackLock, "tempo of an analysis");
        target.marks.bpm = target.marks.bpmAverage = tempo;
    }
    tellGrid (world, target);
}

DeckLoaders::DeckLoaders (DeckWorld& w, const juce::File& decoderLibrary)
    : world (w),
      decoder (decoderLibrary),
      saver ("AnalysisSaver")
{
    for (int d = 0; d < deckCount; ++d)
        loaders[static_cast<size_t> (d)] = std::make_unique<DeckLoader> (world, d, decoder);
    world.measureTempo = [this] (int deckIndex, double nearBpm)
    { loaders[static_cast<size_t> (deckIndex)]->measureTempo (nearBpm); };
}

DeckLoaders::~DeckLoaders()
{
    stop();
    world.measureTempo = [] (int, double) {};
}

void DeckLoaders::load (const juce::File& file, int deckIndex)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr || !AudioFileTypes::matches (file))
        return;
    const auto automix = world.settings.automixOn != 0;
    if (!file.existsAsFile())
    {
        if (automix && deckIndex < 2)
            deck->play.loadNext = 1;
        world.listeners.postText ("*** " + tr ("Load Error") + " ***|" + file.getFileName() + "|"
                                      + faultOfTrack (file, decoder),
                                  deckIndex);
        return world.listeners.post (EngineEvent::loadFailed, deckIndex);
    }
    if (world.settings.lockLoadedDecks != 0 && !automix && deck->isPlaying() && !deck->isAtEnd())
        return world.listeners.postMessage (N_ ("*** Deck Locked ***|Stop the deck to|load new track"),
                                            deckIndex);
    loaders[static_cast<size_t> (deckIndex)]->load (file);
}

void DeckLoaders::unload (int deckIndex)
{
    if (const auto* deck = world.deck (deckIndex);
        deck != nullptr && !deck->isEmpty() && deck->isLoading == 0)
        loaders[static_cast<size_t> (deckIndex)]->unload();
}

void DeckLoaders::saveSoon (int deckIndex)
{
    // A job that saves rests afterwards, and takes up in one go whatever comes meanwhile.
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr)
        return;
    saver.post (deckIndex, { [this, deck] (const std::stop_token&)
                             {
                                 saveAnalysis (world, *deck);
                                 tellGrid (world, *deck);
                                 restOrEnd();
                             } });
}

void DeckLoaders::restOrEnd()
{
    if (!world.pacing.isLive())
        return;
    std::unique_lock guard (endLock);
    ends.wait_for (guard, ending.get_token(), savePause, [] { return false; });
}

void DeckLoaders::waitUntilIdle (int deckIndex)
{
    if (world.deck (deckIndex) == nullptr)
        return;
    loaders[static_cast<size_t> (deckIndex)]->waitUntilIdle();
    saver.wait (deckIndex);
}

void DeckLoaders::stop()
{
    ending.request_stop();
    for (const auto& loader : loaders)
        loader->cancel();
    saver.cancel();
    for (const auto& loader : loaders)
        loader->waitUntilIdle();
    saver.wait();
}

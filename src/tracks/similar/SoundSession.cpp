#include "tracks/similar/SoundSession.h"

#include "support/AudioThread.h"
#include "tracks/similar/SimilarityLibrary.h"

#include <mutex>

namespace
{
std::mutex processLock;
std::weak_ptr<SoundSession> processSession;

SoundFacts factsOf (const SimilarityFacts& facts)
{
    return { static_cast<double> (facts.tempoBpm), static_cast<double> (facts.seconds), facts.key,
             static_cast<double> (facts.keyConfidence) };
}
}

struct SoundSession::Opened
{
    /** Opens at the first call. @returns null without the library */
    SimilaritySession* get (const Places& places, const Watch& watch)
    {
        assertMayBlock();
        const std::scoped_lock guard (lock);
        if (library != nullptr)
            return session.get();
        file = places.folder.getChildFile ("px_mufin.ses").getFullPathName();
        library = std::make_unique<SimilarityLibrary> (places.library, places.folder);
        session.reset (library->newSession());
        if (session != nullptr && session->load (file.toRawUTF8()) == similarityRebuilt
            && watch.notice != nullptr)
            watch.notice (juce::String::fromUTF8 (session->notice()));
        return session.get();
    }

    std::mutex lock; ///< of the opening; afterwards nothing of it changes
    juce::String file;
    std::unique_ptr<SimilarityLibrary> library;
    SimilarityHandle<SimilaritySession> session;
};

SoundSession::SoundSession (Places p, Watch w)
    : places (std::move (p)),
      watch (std::move (w)),
      opened (std::make_unique<Opened>())
{
}

SoundSession::~SoundSession()
{
    if (opened->session != nullptr)
        opened->session->save (opened->file.toRawUTF8());
}

juce::File SoundSession::libraryBesideBinary()
{
    return juce::File::getSpecialLocation (juce::File::currentExecutableFile)
        .getSiblingFile ("AudioGenSDK.so");
}

std::shared_ptr<SoundSession> SoundSession::ofProcess()
{
    const std::scoped_lock guard (processLock);
    return processSession.lock();
}

void SoundSession::setOfProcess (const std::shared_ptr<SoundSession>& session)
{
    const std::scoped_lock guard (processLock);
    processSession = session;
}

bool SoundSession::open()
{
    return opened->get (places, watch) != nullptr;
}

std::optional<SoundFacts> SoundSession::facts (const juce::String& path)
{
    SimilarityFacts facts {};
    auto* const session = opened->get (places, watch);
    if (session == nullptr || session->find (path.toRawUTF8(), &facts) == 0)
        return {};
    return factsOf (facts);
}

std::unique_ptr<SoundListener> SoundSession::listenTo (const juce::String& path, double rate, bool isAgain)
{
    if (!open() || (!isAgain && isKnown (path)))
        return {};
    auto* const extractor = opened->library->newExtractor (rate);
    return extractor != nullptr ? std::make_unique<SoundListener> (*extractor) : nullptr;
}

bool SoundSession::store (const juce::String& path, SoundListener& listener, double tempoBpm)
{
    auto* const session = opened->get (places, watch);
    const auto* const description = listener.extractor->finish (tempoBpm);
    if (session == nullptr || description == nullptr
        || session->store (path.toRawUTF8(), description) != similarityOk)
        return false;
    const auto isWritten = session->save (opened->file.toRawUTF8()) >= similarityOk;
    if (watch.described != nullptr)
        watch.described (path, factsOf (listener.extractor->facts (description)));
    return isWritten;
}

void SoundSession::tellKnown (const juce::String& path)
{
    if (const auto known = facts (path); known && watch.described != nullptr)
        watch.described (path, *known);
}

std::vector<SoundSession::Similar> SoundSession::similar (const juce::String& path, const Query& query)
{
    auto* const session = opened->get (places, watch);
    if (session == nullptr)
        return {};
    const SimilarityQuery asked { query.count, static_cast<float> (query.tempoWeight),
                                  static_cast<float> (query.keyWeight), query.withCopies ? 1 : 0 };
    const SimilarityHandle<SimilarityList> list (session->similar (path.toRawUTF8(), &asked));
    std::vector<Similar> made;
    for (int32_t i = 0; list != nullptr && i < list->count(); ++i)
    {
        const auto item = list->item (i);
        made.push_back ({ juce::String::fromUTF8 (list->path (i)), factsOf (item.facts),
                          static_cast<double> (item.closeness), item.isCopy != 0 });
    }
    return made;
}

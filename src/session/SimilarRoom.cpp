#include "session/SimilarRoom.h"

#include "support/language/Translate.h"

#include <map>
#include <mutex>

namespace
{
constexpr const char *continuePreference = "automixByFit", *yes = "yes";
std::mutex roomsLock;
std::map<const Session*, std::unique_ptr<SimilarRoom>> rooms;

void say (Session& session, const juce::String& sentence)
{
    if (session.prompts != nullptr)
        session.prompts->notify (tr ("Similar songs"), sentence);
}
}

SimilarRoom& SimilarRoom::of (Session& session)
{
    const std::scoped_lock guard (roomsLock);
    auto& room = rooms[&session];
    if (room == nullptr)
        room = std::make_unique<SimilarRoom> (session, SoundSession::libraryBesideBinary());
    return *room;
}

void SimilarRoom::end (Session& session)
{
    std::unique_ptr<SimilarRoom> ended;
    const std::scoped_lock guard (roomsLock);
    if (const auto found = rooms.find (&session); found != rooms.end())
    {
        found->second->settle();
        ended = std::move (found->second);
        rooms.erase (found);
    }
}

SimilarRoom::SimilarRoom (Session& s, const juce::File& library)
    : session (s),
      sounds (std::make_shared<SoundSession> (
          SoundSession::Places { library, s.folders.root.getChildFile ("mufin") },
          SoundSession::Watch { [this] (const juce::String& path, const SoundFacts& facts)
                                { noteKey (path, facts.key); },
                                [this] (const juce::String& sentence)
                                { calls.post ([this, sentence] { say (session, sentence); }); } }))
{
    SoundSession::setOfProcess (sounds);
}

Recommendations* SimilarRoom::recommendations()
{
    if (list == nullptr)
        if (auto* const room = session.browser())
            list = std::make_unique<Recommendations> (*room, *sounds);
    return list.get();
}

SimilarSongs::Weights SimilarRoom::weights() const
{
    return SimilarSongs::weightsOf (priority());
}

juce::String SimilarRoom::priority() const
{
    return session.preferences().get (SimilarSongs::preference, SimilarSongs::byDefault);
}

void SimilarRoom::setPriority (const juce::String& value)
{
    juce::ignoreUnused (
        session.preferences().set (SimilarSongs::preference, value)); // holds until the end, then
    if (list != nullptr)
        list->reorder (weights());
}

bool SimilarRoom::continuesAutomix() const
{
    return session.preferences().get (continuePreference) == yes;
}

void SimilarRoom::setContinuesAutomix (bool continues)
{
    juce::ignoreUnused (session.preferences().set (continuePreference, continues ? yes : "no"));
}

KeyText::Notation SimilarRoom::keyNotation() const
{
    return KeyText::notationOf (session.preferences().get (KeyText::preference));
}

void SimilarRoom::setKeyNotation (KeyText::Notation notation)
{
    juce::ignoreUnused (session.preferences().set (
        KeyText::preference, notation == KeyText::Notation::wheel ? KeyText::wheelValue : "letters"));
}

void SimilarRoom::noteKey (const juce::String& path, int key)
{
    // The library and the preferences are the message thread's.
    if (Fit::isKey (key))
        calls.post ([this, path, key] { writeKey (path, key); });
}

void SimilarRoom::writeKey (const juce::String& path, int key)
{
    auto* const songs = session.library();
    if (songs == nullptr)
        return;
    notes.post ({ [songs, path, text = KeyText::of (key, keyNotation())] (const std::stop_token&)
                  {
                      const auto id = songs->idOfFilename (path);
                      juce::String known;
                      if (id >= 0 && songs->readField (SongField::key, id, known) == LibraryCode::ok
                          && known.trim().isEmpty())
                          // Of a song that stays busy the key is written at the next analysis.
                          juce::ignoreUnused (songs->setTextField (SongField::key, id, text));
                  } });
}

void SimilarRoom::settle()
{
    calls.deliver();
    notes.wait();
}

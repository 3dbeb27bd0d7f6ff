#include "session/Session.h"

#include "library/import/ImportSong.h"
#include "session/AutomixByFit.h"
#include "session/LibraryAutomix.h"
#include "session/PreferencesPlace.h"
#include "session/SimilarRoom.h"
#include "support/files/AudioFileTypes.h"
#include "support/files/OwnBinary.h"
#include "support/language/Translate.h"
#include "tracks/TrackFault.h"

#include <cmath>
#include <utility>

namespace
{
constexpr size_t mostDue = 256; ///< notes that are kept for a library or a song to come

std::mutex sharedLock;
std::weak_ptr<Session> sharedSession;

/** True if one tempo is half or double the other, to 2 %. */
bool isOctaveOf (double bpm, double known)
{
    const auto isNear = [] (double a, double b) { return std::abs (a - b) <= 0.02 * b; };
    return known > 0.0 && (isNear (2.0 * bpm, known) || isNear (bpm, 2.0 * known));
}
}

Session::Session (Options options)
    : folders (std::move (options.folders)),
      libraryPlace (std::move (options.library)),
      decoderLibrary (std::move (options.decoderLibrary)),
      prompts (std::move (options.prompts))
{
}

Session::~Session()
{
    SimilarRoom::end (*this);
    notes.wait();
}

std::shared_ptr<Session> Session::shared (const std::function<Options()>& make)
{
    const std::scoped_lock lock (sharedLock);
    auto session = sharedSession.lock();
    if (session == nullptr)
    {
        session = std::make_shared<Session> (make());
        sharedSession = session;
    }
    return session;
}

juce::File Session::decoderBesideBinary()
{
    return ownBinary().getSiblingFile ("adec.so");
}

void Session::say (const juce::String& title, const juce::String& sentence)
{
    if (prompts == nullptr || sentence.isEmpty())
        return;
    // A host may make an instance on a thread of its own; a verb has no message thread at all.
    const auto* messages = juce::MessageManager::getInstanceWithoutCreating();
    if (messages == nullptr || messages->isThisTheMessageThread())
        prompts->notify (title, sentence);
    else
        juce::MessageManager::callAsync ([asked = prompts, title, sentence]
                                         { asked->notify (title, sentence); });
}

SongDatabase* Session::library()
{
    opener.wait();
    if (takeOpened())
        return &opened->database;

    const auto file = libraryPlace.file().file();
    const auto written = file.getLastModificationTime();
    if (file.getSize() == 0 || written == refused)
        return nullptr;
    fault = open (LibrarySession::Use::change, {});
    if (fault.isNotEmpty())
    {
        refused = written;
        say (tr ("Library"), fault);
        return nullptr;
    }
    return &opened->database;
}

LibraryRoom* Session::browser()
{
    opener.wait();
    if (!takeOpened())
        fault = open (LibrarySession::Use::show, {});
    makeRoom();
    return room.get();
}

LibraryRoom* Session::browserWhenOpen()
{
    if (room != nullptr || opener.isBusy())
        return room.get();
    const auto wasTried = isOpeningLibrary();
    if (takeOpened())
        makeRoom();
    else if (!wasTried)
        opener.post ({ [this] (const std::stop_token&)
                       {
                           Opened made { std::make_unique<LibrarySession>(), {} };
                           made.fault = made.library->open (libraryPlace, LibrarySession::Use::show);
                           const std::scoped_lock scope (openingMutex);
                           justOpened = std::move (made);
                       } });
    return room.get();
}

bool Session::isOpeningLibrary() const
{
    if (opener.isBusy())
        return true;
    const std::scoped_lock scope (openingMutex);
    return justOpened.has_value();
}

/** Takes the library that the worker has opened. @returns whether there is one */
bool Session::takeOpened()
{
    std::optional<Opened> made;
    {
        const std::scoped_lock scope (openingMutex);
        made = std::exchange (justOpened, std::nullopt);
    }
    if (!made || opened != nullptr)
        return opened != nullptr;
    fault = made->fault;
    if (fault.isNotEmpty())
        return false;
    opened = std::move (made->library);
    say (tr ("Library"), opened->notice);
    return true;
}

void Session::makeRoom()
{
    if (opened == nullptr || room != nullptr)
        return;
    LibraryRoom::Places places;
    places.history = historyFolder();
    places.folders = MusicFolders::beside (libraryPlace.file().file());
    places.judge = importJudge (decoderLibrary);
    room = std::make_unique<LibraryRoom> (opened->database, places);
    if (!room->jobs.folders.all().isEmpty())
        room->jobs.lookAtFolders (LibraryJobs::Told::news);
    makeUpForNotes();
}

SongPreview* Session::previewOf (const CPlatterdex& engine)
{
    const std::scoped_lock scope (previewMutex);
    const auto found = previews.find (&engine);
    return found != previews.end() ? found->second.get() : nullptr;
}

juce::String Session::openLibrary (LibrarySession::Use use)
{
    return open (use,
                 [this] (const juce::String& message)
                 {
                     const auto wanted = std::make_shared<bool> (false);
                     if (prompts != nullptr)
                         prompts->askYesNo (tr ("Library"), tr ("%1 Put it there now?", message),
                                            [wanted] (bool yes) { *wanted = yes; });
                     return *wanted;
                 });
}

juce::String Session::open (LibrarySession::Use use, const LibrarySession::Offer& offer)
{
    auto library = std::make_unique<LibrarySession>();
    if (const auto fault = library->open (libraryPlace, use, offer); fault.isNotEmpty())
        return fault;
    opened = std::move (library);
    say (tr ("Library"), opened->notice);
    return {};
}

PreferencesFile& Session::preferences()
{
    if (preferenceStore == nullptr)
        preferenceStore = std::make_unique<PreferencesFile> (preferencesFileOf (folders));
    return *preferenceStore;
}

EngineWorld Session::world()
{
    auto& similar = SimilarRoom::of (*this); // from now on tracks are described
    EngineWorld made;
    made.folders = folders;
    made.decoderLibrary = decoderLibrary;
    made.prompts = prompts;
    made.hasMessageLoop = true;
    made.automixSource = std::make_shared<AutomixByFit> (
        std::make_shared<AutomixReader> (
            [session = shared_from_this()] { return session->library(); }, [this]
            { say (tr ("Message Info"), tr ("Warning: To enable automix, the list shouldn't be empty!")); }),
        *this, similar);
    made.mayKeepSettings = [this] { return mayKeepSettings(); };
    return made;
}

bool Session::mayKeepSettings()
{
    const std::scoped_lock lock (rootMutex);
    if (rootLock.take())
        return true;
    if (!std::exchange (saidThatRootIsTaken, true))
        say (tr ("Platterdex runs twice"), tr ("Another program has the folder %1 in use. What you set in "
                                               "this one is not kept while the other "
                                               "runs.",
                                               folders.root.getFullPathName()));
    return false;
}

/** Keeps a note for later while the library is being opened. */
bool Session::isPutOff (std::function<void()> note)
{
    if (!isOpeningLibrary())
        return false;
    if (due.size() < mostDue)
        due.push_back (std::move (note));
    return true;
}

void Session::makeUpForNotes()
{
    for (const auto& note : std::exchange (due, {}))
        note();
}

void Session::noteGrid (const FoundGrid& grid)
{
    if (isPutOff ([this, grid] { noteGrid (grid); }))
        return;
    if (auto* const songs = library())
        notes.post ({ [this, songs, grid] (const std::stop_token&) { storeGrid (*songs, grid); } });
}

void Session::storeGrid (SongDatabase& songs, const FoundGrid& grid)
{
    const auto id = songs.idOfFilename (grid.path);
    if (id < 0)
    {
        // A track that decks load comes into the library a moment later.
        if (gridsToCome.size() < mostDue)
            gridsToCome[grid.path] = grid;
        return;
    }
    // Unread, a field is taken for unknown; a file that stays busy keeps what it has until the next load.
    const auto numberOf = [&] (SongField field)
    {
        juce::String known;
        juce::ignoreUnused (songs.readField (field, id, known));
        return known.getDoubleValue();
    };
    if (grid.bpm > 0.0 && !isOctaveOf (grid.bpm, numberOf (SongField::bpm)))
        juce::ignoreUnused (songs.setBpm (id, grid.bpm));
    // 0 means that nobody has analysed the song.
    if (const auto confidence = std::max (1, grid.confidence);
        grid.confidence >= 0 && confidence != juce::roundToInt (numberOf (SongField::analyzed)))
        juce::ignoreUnused (songs.setIntField (SongField::analyzed, id, confidence));
}

void Session::noteLoad (const juce::String& path)
{
    if (isPutOff ([this, path] { noteLoad (path); }) || room == nullptr)
        return;
    notes.post ({ [this, path] (const std::stop_token&)
                  {
                      if (!AudioFileTypes::matches (juce::File (path))
                          || !importSong (opened->database, path))
                          return;
                      if (const auto grid = gridsToCome.extract (path))
                          storeGrid (opened->database, grid.mapped());
                      room->watch.look();
                  } });
}

void Session::notePlay (const PlayedSong& song)
{
    if (isPutOff ([this, song] { notePlay (song); }))
        return;
    auto* const songs = library();
    if (songs == nullptr)
        return;
    notes.post ({ [songs, song, shared = room.get()] (const std::stop_token&)
                  {
                      // Of a busy file one play is missing.
                      if (const auto id = songs->idOfFilename (song.path); id >= 0)
                          juce::ignoreUnused (songs->markPlayed (id));
                      if (shared == nullptr)
                          return;
                      // Unwritten, the list of this session has it all the same.
                      juce::ignoreUnused (shared->history.note (song));
                      shared->watch.look();
                      shared->watch.tell ({ .lists = true });
                  } });
}

SessionEngine::SessionEngine (Session& s, CPlatterdex& e) : session (s), engine (e)
{
    juce::ignoreUnused (session.mayKeepSettings()); // says so at the start if another program has the root
    engine.addAnalysisListener (session);
    {
        const std::scoped_lock scope (session.previewMutex);
        session.previews.emplace (&engine, std::make_unique<SongPreview> (engine.preview));
    }
    session.keeper.add (engine);
    session.plays.add (engine);
}

SessionEngine::~SessionEngine()
{
    session.plays.remove (engine);
    session.keeper.remove (engine);
    engine.removeAnalysisListener (session);
    const std::scoped_lock scope (session.previewMutex);
    session.previews.erase (&engine);
}

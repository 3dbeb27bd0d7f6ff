#pragma once

#include "engine/EngineWorld.h"
#include "session/LibrarySession.h"
#include "session/PlayNotes.h"
#include "session/PreferencesFile.h"
#include "session/RootLock.h"
#include "session/SettingsKeeper.h"
#include "session/SongPreview.h"
#include "session/browse/LibraryRoom.h"
#include "support/EngineListener.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>

/** The part of the program that every face needs and a process has once: folders, library, prompts, preferences, the
    decoder's place, the songs of automix, tempos for the library.

    An application makes one; the instances of a plug-in share one, which ends with the last of them. Everything is for
    the message thread but shared() and SessionEngine: a host may make instances on another one. */
class Session : public std::enable_shared_from_this<Session>, private EngineListener
{
public:
    struct Options
    {
        Folders folders {};
        LibraryPlace library {};
        juce::File decoderLibrary = decoderBesideBinary();
        std::shared_ptr<Prompts> prompts {}; ///< without them nobody is asked
    };

    /** Touches no file. Owned by a shared_ptr where world() is used. */
    explicit Session (Options);
    ~Session() override;

    /** The process's session. @param make   asked if there is none yet, or none any more */
    static std::shared_ptr<Session> shared (const std::function<Options()>& make);

    /** "adec.so" beside the program or plug-in, inside a bundle too, so that a bundle is moved as a whole. */
    static juce::File decoderBesideBinary();

    /** The library as a running engine uses it: opened when it is first needed and there. A file that can't be opened is
        said once, and tried again when somebody has changed it.
        @returns null while there is no library, or none that can be opened; else a pointer that holds as long as this */
    SongDatabase* library();

    /** Opens the library for a verb, which can't go on without; asks whether a backup takes the place of a missing one.
        @returns one sentence on why it can't be opened, or nothing */
    juce::String openLibrary (LibrarySession::Use);

    /** The part of the library that the browsers of this process share; it is made empty if it is missing. Files that decks load
        come into the library from then on. Waits for the file; a view asks browserWhenOpen().
        @returns null if it can't be opened; libraryFault() says why. Holds as long as this */
    LibraryRoom* browser();

    /** The same without waiting: null, too, while a worker opens the file, which begins with the first call and, after a fault,
        with the next one. */
    LibraryRoom* browserWhenOpen();
    bool isOpeningLibrary() const;

    /** One sentence on why the library could not be opened the last time, or nothing. */
    juce::String libraryFault() const { return fault; }

    /** The preview of an engine that a SessionEngine ties to this. */
    SongPreview* previewOf (const CPlatterdex&);

    /** Notes tempo and confidence of a song's grid in the library, on a thread of its own: another program may be at work in
        the file. A tempo that its tag tells is not replaced by its half or double; a track that is no song of the library is
        left alone. */
    void noteGrid (const FoundGrid&);

    /** Waits until all grids and plays are noted. Any thread that may block. */
    void waitForNotes() const { notes.wait(); }

    /** The world of an engine with a message loop. It keeps this session alive. */
    EngineWorld world();

    /** The folder of the history of what was played, which need not exist. */
    juce::File historyFolder() const { return libraryPlace.file().file().getSiblingFile ("history"); }

    const Folders folders;
    const LibraryPlace libraryPlace;
    const juce::File decoderLibrary;
    const std::shared_ptr<Prompts> prompts;

    /** Read at the first use. */
    PreferencesFile& preferences();

private:
    friend class SessionEngine;

    /** The outcome of opening the library. */
    struct Opened
    {
        std::unique_ptr<LibrarySession> library;
        juce::String fault;
    };

    void engineEvent (EngineEvent, int) override {}
    void engineMessage (const juce::String&, int) override {}

    void gridFound (const FoundGrid& grid) override { noteGrid (grid); }
    void noteLoad (const juce::String& path);
    void notePlay (const PlayedSong&);

    juce::String open (LibrarySession::Use, const LibrarySession::Offer&);
    bool takeOpened();
    void makeRoom();
    bool isPutOff (std::function<void()> note);
    void makeUpForNotes();
    void storeGrid (SongDatabase&, const FoundGrid&);
    void say (const juce::String& title, const juce::String& sentence);
    bool mayKeepSettings();

    std::unique_ptr<LibrarySession> opened;
    std::unique_ptr<LibraryRoom> room;      ///< behind the library that it uses
    mutable std::mutex openingMutex;        ///< of the next one
    std::optional<Opened> justOpened;       ///< by the worker, until it is taken
    std::vector<std::function<void()>> due; ///< notes that wait for the library
    std::map<juce::String, FoundGrid>
        gridsToCome;    ///< of songs that the library lacks yet; of the notes' worker
    juce::Time refused; ///< the library's file as it was when it could not be opened
    juce::String fault;
    std::map<const CPlatterdex*, std::unique_ptr<SongPreview>> previews;
    std::mutex previewMutex; ///< of the one above
    std::unique_ptr<PreferencesFile> preferenceStore;
    std::mutex rootMutex; ///< of the two below
    RootLock rootLock { folders.setup() };
    bool saidThatRootIsTaken = false;
    PlayNotes plays { [this] (const juce::String& path) { noteLoad (path); },
                      [this] (const PlayedSong& song) { notePlay (song); } };
    SettingsKeeper keeper { [this] { return mayKeepSettings(); } };
    Worker opener { "LibraryOpening" };
    Worker notes { "LibraryNotes" }; ///< last: its jobs use the library
};

/** Ties an engine to a session for as long as this lives: tempos and plays go to the library, settings to their file. Goes
    before the engine. The message thread, or another one that makes and ends plug-ins. */
class SessionEngine
{
public:
    SessionEngine (Session&, CPlatterdex&);
    ~SessionEngine();
    SessionEngine (const SessionEngine&) = delete;
    SessionEngine& operator= (const SessionEngine&) = delete;

private:
    Session& session;
    CPlatterdex& engine;
};

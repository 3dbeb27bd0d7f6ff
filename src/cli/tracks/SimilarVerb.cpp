#include "cli/Verbs.h"

#include "cli/Interruption.h"
#include "cli/RootFolder.h"
#include "cli/TerminalOutput.h"
#include "cli/TerminalPrompts.h"
#include "session/SimilarRoom.h"
#include "session/similar/KeyText.h"
#include "settings/SettingsFile.h"
#include "support/Suggestion.h"
#include "support/language/Translate.h"
#include "tracks/FileAnalysis.h"

#include <array>
#include <cmath>

namespace
{
constexpr std::array options {
    VerbOption { "--limit", "N", N_ ("most songs, 1 to 1000 (20)") },
    VerbOption { "--by", "WHAT",
                 N_ ("what counts most: sound, balanced or mix, which is tempo and key (balanced)") },
    VerbOption { "--wheel", nullptr, N_ ("keys as hours of the circle of fifths: 8B, 8A") },
    RootFolder::option,
    RootFolder::libraryOption,
    VerbOption { "--help", nullptr, N_ ("this text") },
};

constexpr const char* description = N_ (
    "Prints the songs of the library that fit an audio file, best first, one a line with tabs between:\n"
    "how alike they sound in percent of all songs that are farther away, the change of tempo that makes "
    "them\n"
    "meet, with half and double, the relation of the keys, and who they are. Only songs that were analysed "
    "are\n"
    "compared; the file itself is analysed if need be. Copies of the same recording are left out.");

/** Makes sure that a track's sound is known. @returns a sentence on why it is not, or nothing */
juce::String hear (Session& session, const juce::File& track)
{
    auto& sounds = *SimilarRoom::of (session).sounds;
    const auto path = track.getFullPathName();
    if (!sounds.open())
        return tr ("Nothing can be compared: %1 is missing or of another version.",
                   SoundSession::libraryBesideBinary().getFullPathName());
    if (sounds.isKnown (path))
        return {};
    EngineSettings settings;
    loadSettings (settings, session.folders.setup(), session.folders);
    const AdecSharedLibrary decoder (session.decoderLibrary);
    const Interruption interruption;
    Pacing pacing (Pacing::Mode::offline);
    FileAnalysis::Request request;
    request.track = track;
    request.folder = session.folders.beatmarks();
    request.tempoRangeIndex = settings.tempoRangeIndex;
    request.sounds = &sounds;
    request.mayGoOn = [&interruption] { return !interruption.isInterrupted(); };
    const auto result = FileAnalysis::run (request, decoder, pacing);
    SimilarRoom::of (session).settle();
    if (result.isCancelled || interruption.isInterrupted())
        return tr ("The analysis was interrupted.");
    if (result.fault.isNotEmpty())
        return oneLine (path) + ": " + result.fault;
    return sounds.isKnown (path) ? juce::String()
                                 : tr ("%1: Too little of it sounds to be compared.", oneLine (path));
}

int print (Session& session, const juce::File& track, const SimilarSongs::Options& wanted,
           KeyText::Notation keys)
{
    auto& database = *session.library();
    const auto found =
        SimilarSongs::find (database, *SimilarRoom::of (session).sounds, track.getFullPathName(), wanted);
    printLine ("alike\ttempo\tchange\tkey\trelation\tartist\ttitle\tfilename");
    for (const auto& song : found)
    {
        juce::String artist, title;
        // A text that can't be read just now stays empty.
        juce::ignoreUnused (database.readField (SongField::artist, song.songId, artist),
                            database.readField (SongField::title, song.songId, title));
        const auto bpm = song.facts.tempoBpm;
        printLine (juce::StringArray { juce::String (std::lround (100.0 * song.closeness)),
                                       bpm > 0.0 ? juce::String (bpm, 2) : juce::String(), song.tempoChange(),
                                       KeyText::of (song.facts.key, keys), song.keyRelation, oneLine (artist),
                                       oneLine (title), oneLine (song.path) }
                       .joinIntoString ("\t"));
    }
    return ExitCode::success;
}
}

int runSimilar (const juce::StringArray& arguments)
{
    VerbOptions given (options, arguments);
    SimilarSongs::Options wanted;
    const auto limit = given.wholeNumber ("--limit", static_cast<juce::int64> (wanted.limit), 1, 1000);
    if (given.has ("--help"))
    {
        printLine (helpText ("similar FILE [--limit N] [--by WHAT] [--wheel] [--root DIR] [--library FILE]",
                             description, options));
        return ExitCode::success;
    }
    if (given.error().isNotEmpty())
        return failWith (given.error());
    if (given.positional.size() != 1)
        return failWith (tr ("similar needs one file."));
    const auto by = given.has ("--by") ? given.valueOf ("--by") : juce::String ("balanced");
    juce::StringArray priorities;
    for (const auto& priority : SimilarSongs::priorities)
        priorities.add (priority.value);
    if (!priorities.contains (by))
        return failWith (tr ("--by is one of %1, not %2.%3", priorities.joinIntoString (", "), by.quoted(),
                             didYouMean (by, priorities)));
    wanted.limit = static_cast<size_t> (*limit);
    wanted.weights = SimilarSongs::weightsOf (by);

    const auto folders = RootFolder::find (given);
    if (!folders)
        return ExitCode::badInput;
    Session::Options place;
    place.folders = *folders;
    place.library = RootFolder::library (given);
    place.prompts = std::make_shared<TerminalPrompts>();
    Session session (std::move (place));
    if (const auto fault = session.openLibrary (LibrarySession::Use::change); fault.isNotEmpty())
        return failWith (fault);
    const auto track = juce::File::getCurrentWorkingDirectory().getChildFile (given.positional[0]);
    if (const auto fault = hear (session, track); fault.isNotEmpty())
        return failWith (fault);
    return print (session, track, wanted,
                  given.has ("--wheel") ? KeyText::Notation::wheel : KeyText::Notation::letters);
}

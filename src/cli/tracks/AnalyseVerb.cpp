#include "cli/Verbs.h"

#include "cli/Interruption.h"
#include "cli/RootFolder.h"
#include "cli/TerminalOutput.h"
#include "cli/TerminalPrompts.h"
#include "library/import/FolderWalk.h"
#include "library/tags/ReadTags.h"
#include "session/Session.h"
#include "session/SimilarRoom.h"
#include "settings/SettingsFile.h"
#include "support/files/AudioFileTypes.h"
#include "support/language/Translate.h"
#include "tracks/FileAnalysis.h"

#include <array>
#include <atomic>
#include <cmath>
#include <future>
#include <thread>
#include <vector>

namespace
{
constexpr std::array options {
    VerbOption { "--beats", nullptr, N_ ("a line for each mark behind the line of a file") },
    VerbOption { "--jobs", "N", N_ ("files at the same time, 1 to 64 (1)") },
    VerbOption { "--force", nullptr, N_ ("also files whose analysis is kept; what hands have set stays") },
    RootFolder::option,
    RootFolder::libraryOption,
    VerbOption { "--help", nullptr, N_ ("this text") },
};

constexpr const char* description = N_ (
    "Finds tempo, beats and loudness of audio files, and of those below folders, and keeps them for the "
    "decks.\n"
    "What is kept already is only read. The library, where there is one, learns the tempos of its songs. "
    "Prints comma-separated values in the order of the names:\n"
    "\n"
    "  path,seconds,tempo,beats,downbeat,autogain,speed,confidence\n"
    "  with --beats behind it: mark,NUMBER,SECONDS,TEMPO,beat|half|downbeat\n"
    "\n"
    "The downbeat is in seconds, autogain in dB, speed in times real time where the file was analysed.\n"
    "confidence is how sure it is that the beats are right, 0 to 100: below 50 listen before you trust them. "
    "A\n"
    "grid that a hand has moved says 100, one of an analysis by an older version nothing.\n"
    "A file that can't be analysed is one line on the error output, and exit code 2 at the end.");

struct Finding
{
    FileAnalysis::Result result;
    double seconds = 0.0, spentSeconds = 0.0;
};

juce::StringArray tracksOf (const juce::StringArray& arguments)
{
    juce::StringArray tracks;
    for (const auto& argument : arguments)
    {
        const auto file = juce::File::getCurrentWorkingDirectory().getChildFile (argument);
        if (!file.isDirectory())
        {
            tracks.add (file.getFullPathName());
            continue;
        }
        FolderWalk::visitFiles (file,
                                [&tracks] (const juce::String& path, double)
                                {
                                    if (AudioFileTypes::matches (juce::File (path)))
                                        tracks.add (path);
                                    return true;
                                });
    }
    return tracks;
}

/** A value of a table: in quotes where it needs them. */
juce::String field (const juce::String& text)
{
    const auto clean = oneLine (text);
    return clean.containsAnyOf (",\"") ? "\"" + clean.replace ("\"", "\"\"") + "\"" : clean;
}

juce::String decimals (double value, int places)
{
    return juce::String (value, places);
}

Finding analyse (const FileAnalysis::Request& request, const AdecSharedLibrary& decoder)
{
    Pacing pacing (Pacing::Mode::offline);
    Finding finding;
    const auto begin = juce::Time::getMillisecondCounterHiRes();
    finding.result = FileAnalysis::run (request, decoder, pacing);
    finding.spentSeconds = (juce::Time::getMillisecondCounterHiRes() - begin) / 1000.0;
    finding.seconds = finding.result.seconds;
    if (finding.result.wasStored)
    {
        SongRecord record;
        readTags (request.track.getFullPathName(), record);
        finding.seconds = record[SongColumn::duration].getDoubleValue();
        if (finding.result.sampleRate == 0.0)
            finding.result.sampleRate = record[SongColumn::samplerate].getDoubleValue();
    }
    return finding;
}

juce::String confidenceText (const TrackAnalysis& analysis)
{
    const auto confidence = confidenceOf (analysis);
    return confidence ? juce::String (*confidence) : juce::String();
}

void print (const juce::String& path, const Finding& finding, bool withBeats)
{
    const auto& analysis = finding.result.analysis;
    const auto& marks = *analysis.beatMarks;
    const auto rate = finding.result.sampleRate > 0.0 ? finding.result.sampleRate : 44100.0;
    const auto first = static_cast<size_t> (analysis.downbeatId & 1);
    const auto beats = marks.size() > first ? (marks.size() - first + 1) / 2 : 0;
    printLine (
        field (path) + "," + decimals (finding.seconds, 1) + ","
        + (marks.empty() ? juce::String() : decimals (analysis.tempoTracker, 2)) + "," + juce::String (beats)
        + "," + (marks.empty() ? juce::String() : decimals (analysis.downbeatPos / rate, 6)) + ","
        + (analysis.autogain ? decimals (20.0 * std::log10 (*analysis.autogain), 2) : juce::String()) + ","
        + (finding.result.wasStored || finding.spentSeconds <= 0.0
               ? juce::String()
               : juce::String (std::lround (finding.seconds / finding.spentSeconds)))
        + "," + confidenceText (analysis));
    for (size_t i = 0; withBeats && i < marks.size(); ++i)
    {
        const auto* kind = static_cast<int32_t> (i) == analysis.downbeatId ? "downbeat"
                           : (i & 1) == first                              ? "beat"
                                                                           : "half";
        printLine ("mark," + juce::String (i) + "," + decimals (marks[i].pos / rate, 6) + ","
                   + decimals (marks[i].bpm, 2) + "," + kind);
    }
}

/** Analyses all tracks, some at the same time, and prints them in their order. @returns the exit code */
int analyseAll (const juce::StringArray& tracks, Session& session, const VerbOptions& given, int jobs)
{
    const auto& folders = session.folders;
    EngineSettings settings;
    loadSettings (settings, folders.setup(), folders);
    const AdecSharedLibrary decoder (Session::decoderBesideBinary());
    const Interruption interruption;

    std::vector<std::promise<Finding>> promised (static_cast<size_t> (tracks.size()));
    std::atomic<int> next { 0 };
    const auto work = [&]
    {
        for (int i; (i = next++) < tracks.size();)
        {
            FileAnalysis::Request request;
            request.track = juce::File (tracks[i]);
            request.folder = folders.beatmarks();
            request.tempoRangeIndex = settings.tempoRangeIndex;
            request.isAgain = given.has ("--force");
            request.sounds = SimilarRoom::of (session).sounds.get();
            request.mayGoOn = [&interruption] { return !interruption.isInterrupted(); };
            Finding finding;
            finding.result.isCancelled = true;
            if (request.mayGoOn())
                finding = analyse (request, decoder);
            promised[static_cast<size_t> (i)].set_value (std::move (finding));
        }
    };
    std::vector<std::jthread> workers;
    for (int i = 0; i < jobs; ++i)
        workers.emplace_back (work);

    auto exitCode = ExitCode::success;
    for (int i = 0; i < tracks.size(); ++i)
    {
        const auto finding = promised[static_cast<size_t> (i)].get_future().get();
        if (finding.result.isCancelled)
            return failWith (tr ("The analysis was interrupted; what was done is kept."));
        if (finding.result.fault.isNotEmpty())
            exitCode = failWith (oneLine (tracks[i]) + ": " + finding.result.fault);
        else
        {
            print (tracks[i], finding, given.has ("--beats"));
            if (const auto& found = finding.result.analysis;
                !found.beatMarks->empty() && found.tempoTracker > 0.0)
                session.noteGrid ({ tracks[i], found.tempoTracker, confidenceOf (found).value_or (-1) });
            if (!finding.result.isWritten)
                exitCode = failWith (tr ("%1: The analysis can't be written below %2.", oneLine (tracks[i]),
                                         folders.beatmarks().getFullPathName()));
        }
    }
    return exitCode;
}
}

int runAnalyse (const juce::StringArray& arguments)
{
    VerbOptions given (options, arguments);
    const auto jobs = given.wholeNumber ("--jobs", 1, 1, 64);
    if (given.has ("--help"))
    {
        printLine (helpText ("analyse PATH... [--beats] [--jobs N] [--force] [--root DIR]\n                  "
                             "      [--library FILE]",
                             description, options));
        return ExitCode::success;
    }
    if (given.error().isNotEmpty())
        return failWith (given.error());
    if (given.positional.isEmpty())
        return failWith (tr ("analyse needs a file or folder."));
    const auto folders = RootFolder::find (given);
    if (!folders)
        return ExitCode::badInput;
    Session::Options options;
    options.folders = *folders;
    options.library = RootFolder::library (given);
    options.prompts = std::make_shared<TerminalPrompts>();
    Session session (std::move (options));
    printLine ("path,seconds,tempo,beats,downbeat,autogain,speed,confidence");
    return analyseAll (tracksOf (given.positional), session, given, static_cast<int> (*jobs));
}

#include "cli/Verbs.h"

#include "cli/RootFolder.h"
#include "cli/TerminalOutput.h"
#include "cli/TerminalPrompts.h"
#include "cli/mix/MixReport.h"
#include "cli/mix/MixTempo.h"
#include "cli/mix/MixTracks.h"
#include "library/import/ImportFiles.h"
#include "offline/OfflineHost.h"
#include "session/LibraryAutomix.h"
#include "session/Session.h"
#include "settings/SettingsFile.h"
#include "support/files/PrivateFolder.h"
#include "support/language/Translate.h"

#include <juce_events/juce_events.h>

#include <algorithm>
#include <array>

namespace
{
constexpr std::array options {
    VerbOption { "--out", "FILE", N_ ("the mix as a 16-bit stereo WAV file") },
    VerbOption { "--fade", "SECONDS", N_ ("length of a crossfade, 0 to 120 (15)") },
    VerbOption { "--no-sync", nullptr, N_ ("every track in its own tempo") },
    VerbOption { "--bass-swap", nullptr, N_ ("the low bands follow the crossfade") },
    VerbOption { "--order", "ORDER", N_ ("given, or tempo: from slow to fast (given)") },
    VerbOption { "--report", "FILE", N_ ("what was played when, as comma-separated values") },
    VerbOption { "--rate", "HZ", N_ ("8000 to 192000 (44100)") },
    RootFolder::option,
    VerbOption { "--help", nullptr, N_ ("this text") },
};

constexpr const char* usage =
    "mix PATH|LIST.m3u|DIR ... --out FILE [--fade SECONDS] [--no-sync] [--bass-swap]\n"
    "                      [--order given|tempo] [--report FILE] [--rate HZ] [--root DIR]";

constexpr const char* description = N_ (
    "Mixes tracks by automix, faster than real time: one after the other, in tempo and phase, until the\n"
    "last has ended. A track whose tempo is beyond 10 % of the one before, and of its half and double, "
    "plays\n"
    "in its own tempo, which a line on the error output says. Tracks without an analysis are analysed "
    "first,\n"
    "and the analysis is kept below the root.\n"
    "A file that can't be played is one line on the error output, and exit code 2 at the end.\n"
    "\n"
    "The report has a line for each track: track,start,end,tempo,offset_ms, with times in seconds and the\n"
    "distance of its beats from those of the track before: the median while both are heard.");

constexpr int blockFrames = 512;

struct Options
{
    double rate = 44100.0;
    int fadeSeconds = 15;
    bool isSynced = true, swapsBass = false, isByTempo = false;
};

/** Tells the user's library the tempos of its songs. */
void noteTempos (const std::vector<MixTracks::Track>& tracks, const VerbOptions& given,
                 const Folders& folders)
{
    Session::Options wanted;
    wanted.folders = folders;
    wanted.library = RootFolder::library (given);
    wanted.prompts = std::make_shared<TerminalPrompts>();
    Session session (std::move (wanted));
    for (const auto& track : tracks)
        if (track.tempo > 0.0)
            session.noteGrid ({ track.file.getFullPathName(), track.tempo });
}

/** Puts the tracks into a library of this run and into its automix list. The user's own automix list stays.
    @returns the number of those that were skipped */
int fillAutomixList (SongDatabase& database, const std::vector<MixTracks::Track>& tracks,
                     ImportProgress& progress)
{
    juce::StringArray paths;
    for (const auto& track : tracks)
        paths.add (track.file.getFullPathName());
    auto once = paths;
    once.removeDuplicates (false);
    ImportFiles (&database, once, {}).run (progress);
    auto skipped = 0;
    for (const auto& path : once)
        if (database.idOfFilename (path) < 0)
        {
            ++skipped;
            reportLine ("platterdex: " + tr ("%1 was skipped: The library doesn't take it.", oneLine (path)));
        }
    database.addFilesToAutomix (paths);
    return skipped;
}

bool isOver (const CPlatterdex& engine)
{
    return engine.decks.decks[0]->isPlayedOut() && engine.decks.decks[1]->isPlayedOut();
}

bool hasTrack (const CPlatterdex& engine)
{
    return !engine.decks.decks[0]->isEmpty() || !engine.decks.decks[1]->isEmpty();
}

constexpr int64_t bytesPerFrame = 4; // of a recording: 16 bits, stereo

/** Renders until the list has been played. @returns one sentence if there is no mix */
juce::String render (OfflineHost& host, const LibraryAutomix& list, const juce::File& out, MixReport& report,
                     TerminalProgress& progress, size_t trackCount)
{
    auto& engine = host.engine();
    const auto isSynced = engine.settings.automixSync != 0;
    MixTempo tempo (engine);
    engine.automix.start();
    engine.deliverMessages();
    host.waitForLoads();
    int64_t begin = -1;
    progress.setStatusText ("Mixing");
    while (!list.isAtEnd() || !isOver (engine))
    {
        if (progress.shouldExit())
            return tr ("The mix was interrupted; nothing was written.");
        if (begin < 0 && hasTrack (engine))
        {
            begin = host.position();
            if (!engine.recorder.startRecording (out, engine.getSampleRate()))
                return tr ("%1 can't be written.", out.getFullPathName());
        }
        host.render (blockFrames);
        host.waitForLoads();
        if (isSynced)
            tempo.look();
        if (begin >= 0)
            report.look (static_cast<double> (host.position() - begin) / engine.getSampleRate());
        progress.setProgress (static_cast<double> (report.rows().size())
                              / static_cast<double> (trackCount + 1));
    }
    engine.recorder.stopRecording();
    if (engine.recorder.hasFailed()
        || (begin >= 0 && out.getSize() < bytesPerFrame * engine.recorder.recordedFrames))
        return tr ("The mix can't be written: the disk is full or failing.");
    return begin < 0 ? tr ("None of the tracks can be played.") : juce::String();
}

int mix (const VerbOptions& given, const Options& wanted, const Folders& folders)
{
    const auto decoderFile = Session::decoderBesideBinary();
    EngineSettings userSettings;
    loadSettings (userSettings, folders.setup(), folders);

    const PrivateFolder run;
    std::vector<MixTracks::Track> tracks;
    auto skipped = 0;
    SongDatabase database (run.file ("library"), SongDatabase::Storage::memory);
    {
        TerminalProgress progress;
        tracks = MixTracks::analyse (MixTracks::find (given.positional, skipped), folders.beatmarks(),
                                     userSettings.tempoRangeIndex, AdecSharedLibrary (decoderFile), progress,
                                     skipped);
        if (progress.shouldExit())
            return failWith (tr ("The mix was interrupted; nothing was written."));
        noteTempos (tracks, given, folders);
        if (wanted.isByTempo)
            MixTracks::sortByTempo (tracks);
        skipped += fillAutomixList (database, tracks, progress);
    }
    if (tracks.empty())
        return failWith (tr ("There is no track to mix."));
    const auto out = given.fileOf ("--out");
    if (std::any_of (tracks.begin(), tracks.end(), [&out] (const auto& track) { return track.file == out; }))
        return failWith (tr ("%1 is one of the tracks; the mix would replace it.", out.getFullPathName()));

    // The engine works beside the user's settings, on copies of the analyses.
    const Folders engineFolders { run.folder };
    engineFolders.createAll();
    for (const auto& track : tracks)
        if (track.analysis != track.file)
            track.analysis.copyFileTo (engineFolders.beatmarks().getChildFile (track.analysis.getFileName()));

    const auto list = std::make_shared<LibraryAutomix> ([&database] { return &database; });
    OfflineHost::Options hosting;
    hosting.root = run.folder;
    hosting.decoderLibrary = decoderFile;
    hosting.sampleRate = wanted.rate;
    hosting.blockFrames = blockFrames;
    hosting.automixSource = list;

    const juce::TemporaryFile part (out);
    juce::String fault, csv;
    {
        const juce::ScopedJuceInitialiser_GUI juceScope;
        OfflineHost host (hosting);
        auto& settings = host.engine().settings;
        settings.automixFadeSeconds = static_cast<int8_t> (wanted.fadeSeconds);
        settings.automixSync = wanted.isSynced ? 1 : 0;
        settings.automixBassSwap = wanted.swapsBass ? 1 : 0;
        MixReport report (host.engine().decks);
        TerminalProgress progress;
        fault = render (host, *list, part.getFile(), report, progress, tracks.size());
        csv = report.csv();
    }
    if (fault.isNotEmpty())
        return failWith (fault);
    if (!part.overwriteTargetFileWithTemporary())
        return failWith (tr ("%1 can't be written.", out.getFullPathName()));
    if (given.has ("--report") && !given.fileOf ("--report").replaceWithText (csv))
        return failWith (tr ("%1 can't be written.", given.fileOf ("--report").getFullPathName()));
    printLine (trPlural ("Wrote %2, a mix of %1 track.", "Wrote %2, a mix of %1 tracks.",
                         static_cast<int> (tracks.size()), out.getFullPathName()));
    if (skipped > 0)
        return failWith (trPlural ("%1 track is missing in it.", "%1 tracks are missing in it.", skipped));
    return ExitCode::success;
}
}

int runMix (const juce::StringArray& arguments)
{
    VerbOptions given (options, arguments);
    const auto rate = given.wholeNumber ("--rate", 44100, 8000, 192000);
    const auto fade = given.wholeNumber ("--fade", 15, 0, 120);
    if (given.has ("--help"))
    {
        printLine (helpText (usage, description, options));
        return ExitCode::success;
    }
    if (given.error().isNotEmpty())
        return failWith (given.error());
    if (given.positional.isEmpty())
        return failWith (tr ("mix needs tracks, playlists or folders; see platterdex mix --help."));
    if (!given.has ("--out"))
        return failWith (tr ("mix needs --out FILE."));
    if (!requireEnding (given.fileOf ("--out"), "wav"))
        return ExitCode::badInput;
    const auto order = given.has ("--order") ? given.valueOf ("--order") : juce::String ("given");
    if (order != "given" && order != "tempo")
        return failWith (tr ("--order is given or tempo, not %1.", order.quoted()));
    const auto folders = RootFolder::find (given);
    if (!folders)
        return ExitCode::badInput;

    Options wanted;
    wanted.rate = static_cast<double> (*rate);
    wanted.fadeSeconds = static_cast<int> (*fade);
    wanted.isSynced = !given.has ("--no-sync");
    wanted.swapsBass = given.has ("--bass-swap");
    wanted.isByTempo = order == "tempo";
    return mix (given, wanted, *folders);
}

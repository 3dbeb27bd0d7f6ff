#include "cli/mix/MixTracks.h"

#include "analysis/files/AnalysisFile.h"
#include "cli/TerminalOutput.h"
#include "library/formats/M3u.h"
#include "library/import/FolderWalk.h"
#include "support/files/AudioFileTypes.h"
#include "support/language/Translate.h"
#include "tracks/FileAnalysis.h"

#include <algorithm>

namespace
{
void skip (const juce::String& path, const juce::String& reason, int& skipped)
{
    ++skipped;
    reportLine ("platterdex: " + tr ("%1 was skipped: %2", oneLine (path), reason));
}

void addPlaylist (const juce::File& playlist, juce::StringArray& tracks, int& skipped)
{
    juce::FileInputStream stream (playlist);
    if (stream.failedToOpen())
        return skip (playlist.getFullPathName(), tr ("it can't be read."), skipped);
    M3u::read (stream,
               [&] (const juce::String& line, juce::int64)
               {
                   const auto path = M3u::findFile (line, playlist.getParentDirectory());
                   if (path.isEmpty())
                       skip (line, tr ("there is no such file."), skipped);
                   else
                       tracks.add (path);
                   return true;
               });
}
}

juce::StringArray MixTracks::find (const juce::StringArray& arguments, int& skipped)
{
    juce::StringArray tracks;
    for (const auto& argument : arguments)
    {
        const auto file = juce::File::getCurrentWorkingDirectory().getChildFile (argument);
        const auto path = file.getFullPathName();
        if (file.isDirectory())
            FolderWalk::visitFiles (file,
                                    [&tracks] (const juce::String& each, double)
                                    {
                                        if (AudioFileTypes::matches (juce::File (each)))
                                            tracks.add (each);
                                        return true;
                                    });
        else if (!file.existsAsFile())
            skip (path, tr ("there is no such file."), skipped);
        else if (file.hasFileExtension ("m3u;m3u8"))
            addPlaylist (file, tracks, skipped);
        else if (!AudioFileTypes::matches (file))
            skip (path, tr ("it is no audio file of a kind that is played."), skipped);
        else
            tracks.add (path);
    }
    return tracks;
}

std::vector<MixTracks::Track> MixTracks::analyse (const juce::StringArray& paths, const juce::File& beatmarks,
                                                  int tempoRangeIndex, const AdecSharedLibrary& decoder,
                                                  TerminalProgress& progress, int& skipped)
{
    std::vector<Track> tracks;
    Pacing pacing (Pacing::Mode::offline);
    for (int i = 0; i < paths.size(); ++i)
    {
        progress.setStatusText (tr ("Analysing %1", paths[i]));
        FileAnalysis::Request request;
        request.track = juce::File (paths[i]);
        request.folder = beatmarks;
        request.tempoRangeIndex = tempoRangeIndex;
        request.mayGoOn = [&]
        {
            progress.setProgress (static_cast<double> (i) / paths.size());
            return !progress.shouldExit();
        };
        if (!request.mayGoOn())
            break;
        const auto result = FileAnalysis::run (request, decoder, pacing);
        if (result.isCancelled)
            break;
        if (result.fault.isNotEmpty())
        {
            skip (paths[i], result.fault, skipped);
            continue;
        }
        const auto hasBeats = result.analysis.beatMarks && !result.analysis.beatMarks->empty();
        tracks.push_back ({ request.track, AnalysisFile::forTrack (beatmarks, request.track),
                            hasBeats ? result.analysis.tempoTracker : 0.0 });
    }
    return tracks;
}

void MixTracks::sortByTempo (std::vector<Track>& tracks)
{
    const auto isSooner = [] (const Track& a, const Track& b)
    { return a.tempo > 0.0 && (b.tempo <= 0.0 || a.tempo < b.tempo); };
    std::stable_sort (tracks.begin(), tracks.end(), isSooner);
}

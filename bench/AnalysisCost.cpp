#include "adec/BuiltDecoder.h"
#include "measure/DecodedFile.h"
#include "measure/Machine.h"
#include "measure/MusicLike.h"
#include "measure/NamedFiles.h"
#include "measure/Timing.h"

#include "analysis/track/TrackAnalyser.h"
#include "shared/EncodedFiles.h"
#include "shared/TemporaryFolder.h"
#include "tracks/AdecTrack.h"
#include "tracks/FileAnalysis.h"

#include <cstdio>
#include <thread>

// bench_analysis [FILE...]: how much faster than real time tracks are analysed on one core, by processor time but for the
// live columns, which are a batch's beside an engine; and the memory that the analysis of a short and a long track takes. Without files it makes music up.

namespace
{
const AdecSharedLibrary& decoder()
{
    static const AdecSharedLibrary library { juce::File (builtDecoder()) };
    return library;
}

template <typename Work>
double processorSeconds (Work work)
{
    const auto begin = Timing::processorNanoseconds (Timing::Threads::own);
    work();
    return 1e-9 * static_cast<double> (Timing::processorNanoseconds (Timing::Threads::own) - begin);
}

/** Tracker and grid on audio that stands in memory. */
double analysed (const DecodedFile& file)
{
    return processorSeconds (
        [&file]
        {
            const auto& right = file.channels.back();
            TrackAnalyser analyser (file.sampleRate, TrackAnalyser::isClip (file.frames(), file.sampleRate));
            for (int at = 0; at < file.frames(); at += TrackAnalyser::blockFrames)
                analyser.add (file.channels.front().data() + at, right.data() + at,
                              std::min (TrackAnalyser::blockFrames, file.frames() - at));
            TrackAnalysis found;
            analyser.finish (0, found);
        });
}

double decoded (const juce::File& file)
{
    return processorSeconds (
        [&file]
        {
            AdecTrack track (decoder(), file);
            if (track.isPlayable())
                track.decode ([] (std::span<const std::byte>) { return true; });
        });
}

FileAnalysis::Result run (const juce::File& file, const juce::File& folder, Pacing& pacing)
{
    FileAnalysis::Request request;
    request.track = file;
    request.folder = folder;
    request.isAgain = true;
    return FileAnalysis::run (request, decoder(), pacing);
}

/** The rate by the clock at which a batch on stage works. @param isSounding   a deck plays */
double onStage (const juce::File& file, const juce::File& folder, bool isSounding)
{
    Pacing pacing (Pacing::Mode::live);
    pacing.setSounding (isSounding);
    const auto begin = juce::Time::getMillisecondCounterHiRes();
    const auto seconds = run (file, folder, pacing).seconds;
    return 1000.0 * seconds / (juce::Time::getMillisecondCounterHiRes() - begin);
}

void printRow (const juce::File& file, const juce::File& folder)
{
    const auto whole = DecodedFile::read (file);
    FileAnalysis::Result result;
    Pacing pacing (Pacing::Mode::offline);
    const auto both = processorSeconds ([&] { result = run (file, folder, pacing); });
    if (result.fault.isNotEmpty())
        return (void)std::printf ("%s: %s\n", file.getFileName().toRawUTF8(), result.fault.toRawUTF8());
    const auto times = [&result] (double seconds) { return seconds > 0.0 ? result.seconds / seconds : 0.0; };
    const auto alone = whole.frames() > 0 ? times (analysed (whole)) : 0.0;
    const auto decoding = times (decoded (file));
    std::printf ("%8.0f %12.0f %12.0f %12.0f %12.0f %12.0f  %s\n", result.seconds, alone, decoding,
                 times (both), onStage (file, folder, false), onStage (file, folder, true),
                 file.getFileName().toRawUTF8());
}

/** The greatest resident memory while a file is analysed, above what was there before, in MB. */
double peakMegabytes (const juce::File& file, const juce::File& folder)
{
    const auto before = Machine::residentMegabytes();
    std::atomic<bool> done { false };
    auto peak = before;
    std::thread work (
        [&]
        {
            Pacing pacing (Pacing::Mode::offline);
            run (file, folder, pacing);
            done = true;
        });
    while (!done)
    {
        peak = std::max (peak, Machine::residentMegabytes());
        juce::Thread::sleep (2);
    }
    work.join();
    return peak - before;
}
}

int main (int argc, char** argv)
{
    Machine::print();
    const TemporaryFolder folder;
    auto files = namedFiles (argc, argv);
    const auto make = [&folder] (const char* name, double minutes) {
        return EncodedFiles::writeWav (MusicLike::make (60.0 * minutes, 44100.0), 44100.0,
                                       folder.file (name));
    };
    const auto shortTrack = make ("3 minutes.wav", 3.0);
    if (files.empty())
        files = { shortTrack,
                  EncodedFiles::encode (shortTrack, folder.file ("3 minutes.mp3"), { "-b:a", "256k" }),
                  EncodedFiles::encode (shortTrack, folder.file ("3 minutes.flac")) };

    std::printf ("%8s %12s %12s %12s %12s %12s  x real time\n", "seconds", "alone", "decoding",
                 "both, stored", "live, silent", "a deck plays");
    for (const auto& file : files)
        printRow (file, folder.file ("marks"));

    // The long one first: what it leaves to the allocator would hide what it took.
    const auto hour = EncodedFiles::encode (shortTrack, folder.file ("60 minutes.mp3"),
                                            { "-filter_complex", "aloop=loop=19:size=8000000" });
    const auto ofHour = peakMegabytes (hour, folder.file ("marks"));
    std::printf ("memory: %.0f MB for 60 minutes, then %.0f MB more for 3 minutes\n", ofHour,
                 peakMegabytes (shortTrack, folder.file ("marks")));
}

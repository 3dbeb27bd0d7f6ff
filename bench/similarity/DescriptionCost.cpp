#include "adec/BuiltDecoder.h"
#include "measure/Machine.h"
#include "measure/MusicLike.h"
#include "measure/NamedFiles.h"
#include "measure/Timing.h"

#include "shared/EncodedFiles.h"
#include "shared/TemporaryFolder.h"
#include "similarity/BuiltSimilarity.h"
#include "tracks/FileAnalysis.h"

#include <cstdio>

// bench_description [FILE...]: the share of an analysis that describing how the track sounds takes: analyses with and without,
// by turns, by processor time. Without files it makes music up.

namespace
{
double analysed (const juce::File& file, const juce::File& folder, SoundSession* sounds)
{
    static const AdecSharedLibrary decoder { juce::File (builtDecoder()) };
    FileAnalysis::Request request;
    request.track = file;
    request.folder = folder;
    request.isAgain = true;
    request.sounds = sounds;
    Pacing pacing (Pacing::Mode::offline);
    const auto begin = Timing::processorNanoseconds (Timing::Threads::own);
    if (const auto result = FileAnalysis::run (request, decoder, pacing); result.fault.isNotEmpty())
        std::printf ("%s\n", result.fault.toRawUTF8());
    return 1e-9 * static_cast<double> (Timing::processorNanoseconds (Timing::Threads::own) - begin);
}
}

int main (int argc, char** argv)
{
    Machine::print();
    const TemporaryFolder folder;
    auto files = namedFiles (argc, argv);
    if (files.empty())
    {
        files.push_back (EncodedFiles::writeWav (MusicLike::make (180.0, 44100.0), 44100.0,
                                                 folder.file ("3 minutes.wav")));
        files.push_back (EncodedFiles::encode (files[0], folder.file ("3 minutes.mp3"), { "-b:a", "256k" }));
    }
    SoundSession sounds ({ juce::File (builtSimilarity()), folder.file ("mufin") });
    if (!sounds.open())
        return 1;
    std::printf ("%10s %10s %8s\n", "without, s", "with, s", "more");
    for (const auto& file : files)
    {
        constexpr auto rounds = 7;
        auto without = 1e9, with = 1e9;
        for (int round = 0; round < rounds; ++round)
        {
            without = std::min (without, analysed (file, folder.file ("marks"), nullptr));
            with = std::min (with, analysed (file, folder.file ("marks"), &sounds));
        }
        std::printf ("%10.3f %10.3f %6.1f %%  %s\n", without, with, 100.0 * (with / without - 1.0),
                     file.getFileName().toRawUTF8());
    }
}

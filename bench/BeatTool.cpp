#include "measure/DecodedFile.h"

#include "analysis/beats/Takt.h"

#include <cstdio>

// bench_beats FILE: what the beat tracker finds in a file, as lines of "beat SECONDS" (without the halves between beats),
// "downbeat SECONDS" for each bar, "confidence 0..100",
// "bar BEATS" of most of the bars and "bpm TEMPO".

int main (int argc, char** argv)
{
    const auto file = DecodedFile::read (juce::File::getCurrentWorkingDirectory().getChildFile (
        argc == 2 ? juce::CharPointer_UTF8 (argv[1]) : ""));
    CaufTAKT_If* tracker = nullptr;
    const auto isClip = file.frames() < 30 * static_cast<int64_t> (file.sampleRate);
    if (CaufTAKT_If::CreateInstance (&tracker, file.sampleRate, static_cast<int> (file.channels.size()),
                                     isClip ? 0 : 1)
        != 0)
    {
        std::fprintf (stderr, "usage: bench_beats FILE, a file of plain samples at 11025 Hz or more\n");
        return 1;
    }
    std::vector<const float*> channels;
    for (const auto& channel : file.channels)
        channels.push_back (channel.data());
    tracker->process (channels.data(), file.frames());
    tracker->flush (true);
    tracker->trackBeats (0.0f, 0, 0, 0);

    const auto downbeat = tracker->getDownbeatIndex (0, 0);
    CaufTAKT_If::Beat beat;
    for (int i = downbeat % 2; downbeat >= 0 && i < tracker->getNumberOfBeats (0); i += 2)
        if (tracker->getBeat (&beat, i, 0) == 0)
            std::printf ("beat %.6f\n", beat.position / static_cast<double> (file.sampleRate));
    for (int i = 0; tracker->getBeat (&beat, i, CaufTAKT_If::barList) == 0; ++i)
        std::printf ("downbeat %.6f\n", beat.position / static_cast<double> (file.sampleRate));
    std::printf ("confidence %d\n", tracker->getConfidence());
    std::printf ("bar %d\n", tracker->getBeatsPerBar (0));
    std::printf ("bpm %.5f\n", tracker->getAverageTempo (0));
    CaufTAKT_If::DestroyInstance (&tracker);
}

#include "measure/BenchEngine.h"
#include "measure/Machine.h"
#include "measure/Performer.h"
#include "measure/Timing.h"

#include "timecode/ControlDisc.h"
#include "timecode/TimecodeDecoder.h"
#include "timecode/deckmode/TimecodeBrand.h"

#include <cstdio>

// bench_timecode: what following control records costs: the decoder of a deck alone, and the decks' whole way from input to
// speed, as a share of the block's own duration on one core.

namespace
{
constexpr double rate = 44100;
constexpr int frames = 128, seconds = 20, blocks = static_cast<int> (seconds * rate / frames);

void print (const char* what, Timing::Durations& durations)
{
    const auto share = 100.0 / (frames / rate * 1e9);
    std::printf ("%-34s %9.4f %% %9.4f %% %9.4f %%\n", what, durations.mean() * share,
                 durations.quantile (0.5) * share, durations.quantile (0.999) * share);
}

void decoderAlone (const char* what, const ControlMedium& medium)
{
    const SteadyRecord signal (medium, rate, blocks * frames);
    const auto decoder = std::make_unique<TimecodeDecoder>();
    decoder->prepare (medium, codeOf (medium), rate);
    Timing::Durations durations (blocks);
    for (int block = 0; block < blocks; ++block)
    {
        const auto before = Timing::nanoseconds();
        for (int i = block * frames; i < (block + 1) * frames; ++i)
            decoder->process (signal.left[static_cast<size_t> (i)], signal.right[static_cast<size_t> (i)]);
        durations.add (Timing::nanoseconds() - before);
    }
    print (what, durations);
}

/** The stage of all four decks, by what stands in their input buffers. */
void fourDecks (const char* what, const ControlMedium& medium)
{
    const SteadyRecord signal (medium, rate, blocks * frames);
    BenchEngine engine (true, rate, frames);
    for (int deck = 0; deck < deckCount; ++deck)
    {
        auto& timecode = engine->timecodes[static_cast<size_t> (deck)];
        timecode.setBrand (timecodeBrandOf (medium));
        timecode.setMode (TimecodeDeck::Mode::absolute);
        juce::AudioBuffer<float> track (2, static_cast<int> (2 * seconds * rate));
        track.clear();
        engine.putTrack (deck, track, rate);
    }
    engine.processBlock();
    engine->deliverMessages();
    Timing::Durations durations (blocks);
    for (int block = 0; block < blocks; ++block)
    {
        for (int deck = 0; deck < deckCount; ++deck)
        {
            auto& input = engine.deck (deck).scratchBuffer;
            const auto first = block * frames;
            std::copy_n (signal.left.data() + first, frames, input.getWritePointer (0));
            std::copy_n (signal.right.data() + first, frames, input.getWritePointer (1));
            engine.deck (deck).scratchFrames = frames;
        }
        const auto before = Timing::nanoseconds();
        for (auto& timecode : engine->timecodes)
            timecode.feed();
        durations.add (Timing::nanoseconds() - before);
    }
    print (what, durations);
}
}

int main()
{
    Machine::print();
    std::printf ("Cost of control records at %d frames; shares of the block's duration on one core.\n",
                 frames);
    std::printf ("%-34s %11s %11s %11s\n", "", "mean", "median", "99.9 %");
    const auto& disc = controlMedia()[0];
    const auto& record = *findControlMedium ("serato_2a");
    decoderAlone ("decoder, control disc", disc);
    decoderAlone ("decoder, record", record);
    fourDecks ("four decks, control disc", disc);
    fourDecks ("four decks, record", record);
}

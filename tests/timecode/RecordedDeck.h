#pragma once

#include "../engine/EngineFixture.h"
#include "ControlSignal.h"

#include "timecode/deckmode/TimecodeBrand.h"

/** Deck A of an engine with noise on it, under a control record in input A. */
struct RecordedDeck : EngineFixture
{
    static constexpr int seconds = 60;

    RecordedDeck (const ControlMedium& medium, TimecodeDeck::Mode mode)
    {
        loadNoise (0, seconds);
        engine->settings.deckSetup[0].timecodeLeadIn = 0.0f;
        timecode().setBrand (timecodeBrandOf (medium));
        timecode().setMode (mode);
        render (0);
        feed (ControlSignal { 44100, std::vector<float> (64), std::vector<float> (64),
                              std::vector<double> (64) });
        places.clear();
    }

    TimecodeDeck& timecode() { return engine->timecodes[0]; }

    /** Plays a signal. @returns the deck's left output */
    std::vector<float> feed (const ControlSignal& signal, int block = 128)
    {
        std::vector<float> out;
        juce::AudioBuffer<float> buffer (CPlatterdex::outputChannels, block);
        for (size_t done = 0; done < signal.size(); done += static_cast<size_t> (block))
        {
            buffer.clear();
            const auto count = std::min (static_cast<size_t> (block), signal.size() - done);
            std::copy_n (signal.left.begin() + static_cast<std::ptrdiff_t> (done), count,
                         buffer.getWritePointer (0));
            std::copy_n (signal.right.begin() + static_cast<std::ptrdiff_t> (done), count,
                         buffer.getWritePointer (1));
            juce::AudioBuffer<float> piece (buffer.getArrayOfWritePointers(), buffer.getNumChannels(),
                                            static_cast<int> (count));
            process (piece);
            engine->deliverMessages();
            out.insert (out.end(), piece.getReadPointer (4), piece.getReadPointer (4) + count);
            places.push_back (deck().head.position / 44100);
        }
        return out;
    }

    /** The track at a place in seconds, as a linear reading of its samples. */
    double trackAt (double place) const
    {
        const auto& samples = engine->decks.decks[0]->audioMemory;
        const auto at = std::clamp (place * 44100, 0.0, (seconds - 1) * 44100.0);
        const auto i = static_cast<int> (at);
        const auto share = at - i;
        return (samples.left()[i] * (1 - share) + samples.left()[i + 1] * share) / 32768;
    }

    std::vector<double> places; ///< of the deck after each block, in seconds
};

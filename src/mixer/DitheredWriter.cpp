#include "mixer/DitheredWriter.h"

#include <algorithm>
#include <array>
#include <limits>

DitheredWriter::DitheredWriter (std::unique_ptr<juce::AudioFormatWriter> t, std::atomic<bool>* f)
    : AudioFormatWriter (nullptr, t->getFormatName(), t->getSampleRate(),
                         static_cast<unsigned int> (t->getNumChannels()),
                         static_cast<unsigned int> (t->getBitsPerSample())),
      target (std::move (t)),
      failed (f)
{
    usesFloatingPointData = false;
    for (int channel = 0; channel < getNumChannels(); ++channel)
        random.emplace_back (channel + 1);
}

bool DitheredWriter::write (const int** channels, int frames)
{
    const auto count = getNumChannels();
    if (frames > capacity)
    {
        rounded.malloc (frames * count);
        capacity = frames;
    }

    const int64_t step = int64_t { 1 } << (32 - getBitsPerSample());
    constexpr int64_t least = std::numeric_limits<int>::min(), most = std::numeric_limits<int>::max();
    juce::HeapBlock<const int*> pointers (count + 1, true);
    for (int channel = 0; channel < count && channels[channel] != nullptr; ++channel)
    {
        auto* const out = rounded.getData() + channel * capacity;
        auto& numbers = random[static_cast<size_t> (channel)];
        const auto noise = [&] { return static_cast<int64_t> (numbers.nextInt (static_cast<int> (step))); };
        for (int i = 0; i < frames; ++i)
        {
            // Two numbers of 0 to a step, less their mean of one step; the half step makes the cut a rounding.
            const auto value = channels[channel][i] + noise() + noise() - step + step / 2;
            out[i] = static_cast<int> (std::clamp (value, least, most - step + 1) & ~(step - 1));
        }
        pointers[channel] = out;
    }
    return seen (target->write (pointers, frames));
}

bool DitheredWriter::seen (bool isWritten)
{
    if (!isWritten && failed != nullptr)
        *failed = true;
    return isWritten;
}

#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

/** Halves the rate of a signal: a half-band filter of 15 taps, 50 dB down from 0.7 of the new Nyquist frequency's mirror on. Windowed
    sinc (Kaiser, beta 4.5). One thread. */
class HalfBand
{
public:
    HalfBand() { history.assign (taps - 1, 0.0f); }

    /** Appends the halved signal to `out`. Frames that make no pair wait for the next call. */
    void process (std::span<const float> in, std::vector<float>& out)
    {
        history.insert (history.end(), in.begin(), in.end());
        const auto count = history.size() >= taps ? (history.size() - taps) / 2 + 1 : 0;
        const auto begin = out.size();
        out.resize (begin + count);
        const auto* source = history.data();
        auto* target = out.data() + begin;
        for (size_t i = 0; i < count; ++i, source += 2)
            target[i] = 0.5f * source[7] + side[0] * (source[6] + source[8])
                        + side[1] * (source[4] + source[10]) + side[2] * (source[2] + source[12])
                        + side[3] * (source[0] + source[14]);
        history.erase (history.begin(), history.begin() + static_cast<std::ptrdiff_t> (2 * count));
    }

private:
    static constexpr size_t taps = 15;
    static constexpr std::array<float, 4> side { 0.30986f, -0.08267f, 0.02903f, -0.00622f };

    std::vector<float> history;
};

#include "fx/reverb/CombBank.h"

#include "fx/reverb/Flushed.h"

#include <algorithm>

void CombBank::setLines (const std::array<std::span<float>, combs>& buffers) noexcept
{
    for (size_t i = 0; i < combs; ++i)
        lines[i] = { buffers[i], 0 };
}

void CombBank::setFeedback (float amount, float damping) noexcept
{
    feedback = amount;
    damp1 = damping;
    damp2 = 1.0f - damping;
}

void CombBank::process (const Piece& input, Piece& left, Piece& right, int frames) noexcept
{
    using Frame = std::array<float, combs>;
    std::array<Frame, pieceFrames> table;
    const auto count = static_cast<size_t> (frames);

    for (size_t c = 0; c < combs; ++c)
    {
        const auto& [buffer, index] = lines[c];
        const auto first = std::min (count, buffer.size() - index);
        for (size_t i = 0; i < first; ++i)
            table[i][c] = buffer[index + i];
        for (size_t i = first; i < count; ++i)
            table[i][c] = buffer[i - first];
    }

    auto stores = filterStores;
    for (size_t i = 0; i < count; ++i)
    {
        auto& frame = table[i];
        // Halves are added to halves, down to the pair of channels.
        std::array<float, 8> eight;
        for (size_t c = 0; c < 8; ++c)
            eight[c] = frame[c] + frame[c + 8];
        std::array<float, 4> four;
        for (size_t c = 0; c < 4; ++c)
            four[c] = eight[c] + eight[c + 4];
        left[i] = four[0] + four[2];
        right[i] = four[1] + four[3];

        for (size_t c = 0; c < combs; ++c)
        {
            stores[c] = flushed (frame[c] * damp2 + stores[c] * damp1);
            frame[c] = flushed (input[i] + stores[c] * feedback);
        }
    }
    filterStores = stores;

    for (size_t c = 0; c < combs; ++c)
    {
        auto& [buffer, index] = lines[c];
        const auto first = std::min (count, buffer.size() - index);
        for (size_t i = 0; i < first; ++i)
            buffer[index + i] = table[i][c];
        for (size_t i = first; i < count; ++i)
            buffer[i - first] = table[i][c];
        index = (index + count) % buffer.size();
    }
}

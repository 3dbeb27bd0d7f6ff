#include "fx/reverb/CombBank.h"

#include "fx/reverb/Flushed.h"

#include <algorithm>
#include <cstring>

namespace
{
using Lanes [[gnu::vector_size (16)]] = float;
constexpr size_t lanes = 4, groups = CombBank::combs / lanes;

Lanes load (const float* from) noexcept
{
    Lanes values;
    std::memcpy (&values, from, sizeof values);
    return values;
}

void store (float* to, const Lanes& values) noexcept
{
    std::memcpy (to, &values, sizeof values);
}

/** Makes the rows of a square its columns. */
void transpose (Lanes& a, Lanes& b, Lanes& c, Lanes& d) noexcept
{
    const auto lowAB = __builtin_shufflevector (a, b, 0, 4, 1, 5),
               highAB = __builtin_shufflevector (a, b, 2, 6, 3, 7),
               lowCD = __builtin_shufflevector (c, d, 0, 4, 1, 5),
               highCD = __builtin_shufflevector (c, d, 2, 6, 3, 7);
    a = __builtin_shufflevector (lowAB, lowCD, 0, 1, 4, 5);
    b = __builtin_shufflevector (lowAB, lowCD, 2, 3, 6, 7);
    c = __builtin_shufflevector (highAB, highCD, 0, 1, 4, 5);
    d = __builtin_shufflevector (highAB, highCD, 2, 3, 6, 7);
}
}

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

float* CombBank::beginPiece (size_t comb, size_t count) noexcept
{
    const auto& [buffer, index] = lines[comb];
    if (count == pieceFrames && index + count <= buffer.size())
        return buffer.data() + index;
    auto& piece = pieces[comb];
    const auto first = std::min (count, buffer.size() - index);
    std::copy_n (buffer.begin() + static_cast<std::ptrdiff_t> (index), first, piece.begin());
    std::copy_n (buffer.begin(), count - first, piece.begin() + static_cast<std::ptrdiff_t> (first));
    return piece.data();
}

void CombBank::endPiece (size_t comb, const float* piece, size_t count) noexcept
{
    auto& [buffer, index] = lines[comb];
    if (piece != buffer.data() + index)
    {
        const auto first = std::min (count, buffer.size() - index);
        std::copy_n (piece, first, buffer.begin() + static_cast<std::ptrdiff_t> (index));
        std::copy_n (piece + first, count - first, buffer.begin());
    }
    index = index + count < buffer.size() ? index + count : index + count - buffer.size();
}

void CombBank::process (const Piece& input, Piece& left, Piece& right, int frames) noexcept
{
    const auto count = static_cast<size_t> (frames);
    std::array<float*, combs> from;
    for (size_t c = 0; c < combs; ++c)
        from[c] = beginPiece (c, count);

    std::array<Lanes, groups> stores;
    for (size_t g = 0; g < groups; ++g)
        stores[g] = load (filterStores.data() + lanes * g);

    for (size_t begin = 0; begin < count; begin += lanes)
    {
        std::array<std::array<Lanes, groups>, lanes> table; // of frames
        for (size_t g = 0; g < groups; ++g)
        {
            for (size_t i = 0; i < lanes; ++i)
                table[i][g] = load (from[lanes * g + i] + begin);
            transpose (table[0][g], table[1][g], table[2][g], table[3][g]);
        }
        const auto end = std::min (lanes, count - begin);
        for (size_t i = 0; i < end; ++i)
        {
            auto& frame = table[i];
            // Halves are added to halves, down to the pair of channels.
            const auto four = (frame[0] + frame[2]) + (frame[1] + frame[3]);
            left[begin + i] = four[0] + four[2];
            right[begin + i] = four[1] + four[3];
            for (size_t g = 0; g < groups; ++g)
            {
                stores[g] = flushed (frame[g] * damp2 + stores[g] * damp1);
                frame[g] = flushed (input[begin + i] + stores[g] * feedback);
            }
        }
        for (size_t g = 0; g < groups; ++g)
        {
            transpose (table[0][g], table[1][g], table[2][g], table[3][g]);
            for (size_t i = 0; i < lanes; ++i)
                store (from[lanes * g + i] + begin, table[i][g]);
        }
    }

    for (size_t g = 0; g < groups; ++g)
        store (filterStores.data() + lanes * g, stores[g]);
    for (size_t c = 0; c < combs; ++c)
        endPiece (c, from[c], count);
}

#include "support/RingBuffer.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>
#include <vector>

TEST (RingBuffer, GivesBackWhatWentInOverManyWraps)
{
    RingBuffer ring;
    std::mt19937 random (7);
    float nextIn = 0.0f, nextOut = 0.0f;
    std::vector<float> piece (RingBuffer::bufferSize + 100);

    for (int round = 0; round < 2000; ++round)
    {
        const auto offered = static_cast<int32_t> (random() % piece.size());
        std::iota (piece.begin(), piece.begin() + offered, nextIn);
        const auto fitting = std::min (offered, ring.space());
        ASSERT_EQ (ring.write (piece.data(), offered), fitting);
        nextIn += static_cast<float> (fitting);

        const auto wanted = static_cast<int32_t> (random() % piece.size());
        const auto there = std::min (wanted, ring.available());
        ASSERT_EQ (ring.read (piece.data(), wanted), there);
        for (int32_t i = 0; i < there; ++i)
            ASSERT_EQ (piece[static_cast<size_t> (i)], nextOut + static_cast<float> (i));
        nextOut += static_cast<float> (there);

        if (nextIn > 8'000'000.0f) // floats count exactly only to 2^24
        {
            ring.clear();
            nextIn = nextOut = 0.0f;
        }
    }
}

TEST (RingBuffer, FullIsNotEmpty)
{
    RingBuffer ring;
    const std::vector<float> ones (RingBuffer::bufferSize, 1.0f);
    EXPECT_EQ (ring.write (ones.data(), RingBuffer::bufferSize), RingBuffer::bufferSize);
    EXPECT_EQ (ring.available(), RingBuffer::bufferSize);
    EXPECT_EQ (ring.space(), 0);
    EXPECT_EQ (ring.write (ones.data(), 1), 0);
    ring.clear();
    EXPECT_EQ (ring.available(), 0);
    float out = 0.0f;
    EXPECT_EQ (ring.read (&out, 1), 0);
    EXPECT_EQ (ring.write (ones.data(), -5), 0);
}

#pragma once

#include <cstddef>
#include <vector>

/** One rendered stroke or note, to be mixed wherever the score has it. Mono if `right` is empty. */
struct Shot
{
    std::vector<float> left, right;

    size_t frames() const noexcept { return left.size(); }
};

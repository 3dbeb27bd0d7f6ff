#pragma once

#include "similarity/sound/Description.h"

/** The usual means and spreads of the measured properties, over 142 pieces of eleven games of all styles. */
namespace Reference
{
struct Usual
{
    float mean, spread;
};

extern const std::array<Usual, SimilarityDescription::wholeDims> whole;
extern const std::array<Usual, SimilarityDescription::partDims> part;
}

#include "fx/modulation/LfoTable.h"

#include <cmath>
#include <numbers>

namespace fx_dsp
{
// A sine: a sweep that slows down at both ends, where a triangle's corner would be heard.
LfoTable::LfoTable()
{
    for (int i = 0; i <= size; ++i)
        values[static_cast<size_t> (i)] = static_cast<float> (std::sin (2.0 * std::numbers::pi * i / size));
}

const LfoTable& LfoTable::sine()
{
    static const LfoTable table;
    return table;
}
}

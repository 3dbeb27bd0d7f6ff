#include "analysis/beats/onset/BeatMarks.h"

#include <algorithm>
#include <cmath>

int CBeatMarks::nearest (double position) const
{
    const auto after = std::lower_bound (elements.begin(), elements.end(), position,
                                         [] (const Element& e, double p) { return e.position < p; });
    const auto index = static_cast<int> (after - elements.begin());
    if (after == elements.begin())
        return elements.empty() ? -1 : 0;
    if (after == elements.end())
        return index - 1;
    return position - (after - 1)->position <= after->position - position ? index - 1 : index;
}

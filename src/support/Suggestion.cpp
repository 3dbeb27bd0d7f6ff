#include "support/Suggestion.h"

#include "support/language/Translate.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace
{
/** The optimal string alignment distance: insertions, deletions, replacements and swaps of neighbours. */
int distance (const juce::String& a, const juce::String& b)
{
    const auto width = static_cast<size_t> (b.length()) + 1;
    std::vector<int> before (width), last (width), row (width);
    std::iota (last.begin(), last.end(), 0);
    for (int i = 1; i <= a.length(); ++i)
    {
        row[0] = i;
        for (size_t j = 1; j < width; ++j)
        {
            const auto at = static_cast<int> (j);
            row[j] =
                std::min ({ last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] != b[at - 1] ? 1 : 0) });
            if (i > 1 && j > 1 && a[i - 1] == b[at - 2] && a[i - 2] == b[at - 1])
                row[j] = std::min (row[j], before[j - 2] + 1);
        }
        std::swap (before, last);
        std::swap (last, row);
    }
    return last.back();
}
}

juce::String didYouMean (const juce::String& word, const juce::StringArray& candidates)
{
    const auto wanted = word.toLowerCase();
    auto nearest = std::max (1, wanted.length() / 3) + 1;
    juce::String found;
    for (const auto& candidate : candidates)
        if (const auto far = distance (wanted, candidate.toLowerCase()); far < nearest)
        {
            nearest = far;
            found = candidate;
        }
    return found.isEmpty() ? juce::String() : " " + tr ("Did you mean %1?", found);
}

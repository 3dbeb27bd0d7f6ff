#include "cli/TerminalTable.h"

#include "cli/TerminalOutput.h"

#include <algorithm>

void printTable (const std::vector<juce::StringArray>& rows, bool withTabs)
{
    std::vector<int> widths;
    for (const auto& row : rows)
    {
        widths.resize (std::max (widths.size(), static_cast<size_t> (row.size())));
        for (int i = 0; i < row.size(); ++i)
            widths[static_cast<size_t> (i)] = std::max (widths[static_cast<size_t> (i)], row[i].length());
    }
    for (const auto& row : rows)
    {
        juce::String line;
        for (int i = 0; i < row.size(); ++i)
            line << (withTabs ? row[i] + "\t"
                              : row[i].paddedRight (' ', widths[static_cast<size_t> (i)] + 2));
        printLine (withTabs ? line.dropLastCharacters (1) : line.trimEnd());
    }
}

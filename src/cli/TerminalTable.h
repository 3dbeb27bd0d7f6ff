#pragma once

#include <juce_core/juce_core.h>

#include <vector>

/** Prints rows of cells, the first of them the columns' names: aligned for people, or with tabs between for programs. */
void printTable (const std::vector<juce::StringArray>& rows, bool withTabs);

#pragma once

#include "support/Prompts.h"

/** Questions for a folder, which are those for a file whose pattern is that of folders. */
namespace FolderQuestion
{
inline constexpr const char* pattern = "*/";

inline Prompts::FileQuestion make (const juce::String& title, const juce::File& start)
{
    return { title, start, pattern };
}

inline bool isOne (const Prompts::FileQuestion& question)
{
    return question.pattern == pattern;
}
}

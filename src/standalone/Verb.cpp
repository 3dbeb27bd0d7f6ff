#include "standalone/Verb.h"

#include <cstdio>

namespace
{
void writeLine (std::FILE* stream, const juce::String& line)
{
    // In one piece, so that lines of several processes in one log stay whole.
    const auto whole = line + "\n";
    std::fwrite (whole.toRawUTF8(), 1, whole.getNumBytesAsUTF8(), stream);
}
}

int failWith (const juce::String& sentence)
{
    reportLine ("platterdex: " + sentence);
    return ExitCode::badInput;
}

void printLine (const juce::String& line)
{
    writeLine (stdout, line);
}

void reportLine (const juce::String& line)
{
    writeLine (stderr, line);
}

#include "cli/TerminalOutput.h"

#include "support/language/Translate.h"

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

bool requireEnding (const juce::File& file, const char* ending)
{
    if (file.hasFileExtension (ending))
        return true;
    failWith (tr ("%1 does not end in .%2, which is what is written.", file.getFullPathName(), ending));
    return false;
}

juce::String oneLine (const juce::String& text)
{
    const auto isControl = [] (juce::juce_wchar c) { return c < 32 || (c >= 127 && c < 160); };
    auto at = text.getCharPointer();
    while (!at.isEmpty() && !isControl (*at))
        ++at;
    if (at.isEmpty())
        return text;

    juce::String clean;
    for (auto c : text)
        clean << (isControl (c) ? juce::juce_wchar (' ') : c);
    return clean;
}

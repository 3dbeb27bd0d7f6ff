#pragma once

#include <juce_core/juce_core.h>

#include <vector>

/** The files that the command line names. */
inline std::vector<juce::File> namedFiles (int argc, char** argv)
{
    std::vector<juce::File> files;
    for (int i = 1; i < argc; ++i)
        files.push_back (
            juce::File::getCurrentWorkingDirectory().getChildFile (juce::CharPointer_UTF8 (argv[i])));
    return files;
}

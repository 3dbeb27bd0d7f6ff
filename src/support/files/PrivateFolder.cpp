#include "support/files/PrivateFolder.h"

#include <string>

#include <stdlib.h>

namespace
{
juce::File makeFolder()
{
    auto name = juce::File::getSpecialLocation (juce::File::tempDirectory)
                    .getChildFile ("platterdex-XXXXXX")
                    .getFullPathName()
                    .toStdString();
    // Mode 700, and a new one or none.
    if (::mkdtemp (name.data()) == nullptr)
        return juce::File ("/nonexistent/platterdex");
    return juce::File (juce::String::fromUTF8 (name.c_str()));
}
}

PrivateFolder::PrivateFolder() : folder (makeFolder()) {}

PrivateFolder::~PrivateFolder()
{
    folder.deleteRecursively();
}

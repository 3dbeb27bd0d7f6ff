#pragma once

#include <juce_core/juce_core.h>

/** An empty folder of its own for one test, gone with it. */
class TemporaryFolder
{
public:
    TemporaryFolder() { folder.createDirectory(); }
    ~TemporaryFolder() { folder.deleteRecursively(); }
    TemporaryFolder (const TemporaryFolder&) = delete;
    TemporaryFolder& operator= (const TemporaryFolder&) = delete;

    juce::File file (const juce::String& name) const { return folder.getChildFile (name); }
    operator const juce::File&() const { return folder; }

private:
    juce::File folder { juce::File::getSpecialLocation (juce::File::tempDirectory)
                            .getNonexistentChildFile ("platterdex-test-" + juce::Uuid().toString(), {}) };
};

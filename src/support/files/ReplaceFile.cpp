#include "support/files/ReplaceFile.h"

#include "support/AudioThread.h"

bool replaceFile (const juce::File& target, const void* bytes, size_t size)
{
    assertMayBlock();
    const juce::TemporaryFile temporary (target, juce::TemporaryFile::useHiddenFile);
    {
        juce::FileOutputStream stream (temporary.getFile());
        if (stream.failedToOpen() || !stream.write (bytes, size))
            return false;
        stream.flush();
        if (stream.getStatus().failed())
            return false;
    }
    return temporary.overwriteTargetFileWithTemporary();
}

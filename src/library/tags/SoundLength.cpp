#include "library/tags/SoundLength.h"

#include "library/tags/TagFile.h"

#include <exception>

double statedSeconds (const juce::File& path)
{
    try
    {
        const TagFile file (path.getFullPathName(), true);
        return file.isUsable() && file.audio() != nullptr ? 0.001 * file.audio()->lengthInMilliseconds()
                                                          : 0.0;
    }
    catch (const std::exception&)
    {
        return 0.0;
    }
}

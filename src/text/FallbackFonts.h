#pragma once

#include <juce_core/juce_core.h>

#include <memory>
#include <vector>

/** The fonts that the machine has, for the characters that ours lacks: names in Japanese, symbols. Files are
    looked at only when one is missing; bold sans ones first. One object for the program. Any thread. */
class FallbackFonts
{
public:
    struct File
    {
        juce::String path;
        const void* data;
        size_t size;
        double heightPerEm;
    };

    static FallbackFonts& getInstance();
    ~FallbackFonts();

    /** A font file that has a character; null where none has. The file stays as long as the program. */
    const File* findFont (uint32_t code);

private:
    struct Opened;

    FallbackFonts();

    juce::CriticalSection lock;
    std::vector<std::unique_ptr<Opened>> opened; ///< those that had a character once
    std::vector<juce::File> candidates;          ///< in the order of their fitness
    bool listed = false;
};

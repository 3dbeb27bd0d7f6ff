#pragma once

#include <juce_core/juce_core.h>

#include <optional>
#include <vector>

/** The font files that text is drawn with, by name: one object for the program. Any thread. */
class ZRRendererFontManager
{
public:
    struct FontFile
    {
        juce::String name;
        const void* data;
        size_t size;
    };

    static ZRRendererFontManager& getInstance();

    /** Registers a font file under a name; the first one of a name stays.
        @param data   must stay as long as the program; not copied
        @returns false, and registers nothing, where the file holds no outlines that can be read */
    bool addFont (const juce::String& name, const void* data, size_t size);

    std::optional<FontFile> findFont (const juce::String& name) const;

private:
    ZRRendererFontManager() = default;

    juce::CriticalSection lock;
    std::vector<FontFile> fonts;
};

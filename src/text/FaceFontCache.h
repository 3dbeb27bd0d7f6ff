#pragma once

#include "text/CachedFace.h"

#include <juce_events/juce_events.h>

/** The faces in use, each with its glyphs: one object for the program, made on first use and gone with JUCE.
    Any thread. */
class FaceFontCache : private juce::DeletedAtShutdown
{
public:
    /** Sizes times scales times styles on the screen at once stay below this, or faces are rendered again and again. */
    static constexpr int maxFaces = 30;

    ~FaceFontCache() override;

    JUCE_DECLARE_SINGLETON (FaceFontCache, false)

    /** A font at one size and style; see CachedFace for the parameters. A new one beyond the thirtieth takes
        the place of the oldest, which lives on for those who hold it.
        @returns never null */
    std::shared_ptr<CachedFace> getFace (const juce::String& name, const void* data, size_t size,
                                         int32_t pixelHeight, bool hinted, double embolden, double slant);

    int getNumFaces() const;

private:
    FaceFontCache() = default;

    juce::CriticalSection lock;
    std::vector<std::shared_ptr<CachedFace>> faces; ///< the oldest first
};

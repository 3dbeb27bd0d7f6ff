#pragma once

#include <juce_core/juce_core.h>

/** The size of the interface in percent of its pixels, kept in a small file of the setup folder. */
class EditorScale
{
public:
    static constexpr int least = 100, most = 200;

    /** @param setupFolder   may not exist yet */
    explicit EditorScale (const juce::File& setupFolder);

    int percent() const noexcept { return value; }

    /** Takes the value, limited to its range, and keeps it. */
    void set (int percent);

    /** The factor to draw with, so that the content keeps within its own limits whatever the window's size.
        @param width, height   of the window */
    float factorFor (int width, int height) const noexcept;

private:
    const juce::File file;
    int value = 100;
};

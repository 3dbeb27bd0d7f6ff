#pragma once

#include "session/PreferencesFile.h"

/** The size of the interface in percent of its pixels, kept among the preferences. */
class EditorScale
{
public:
    static constexpr int least = 100, most = 200;

    /** @param preferences   outlive this */
    explicit EditorScale (PreferencesFile& preferences);

    int percent() const noexcept { return value; }

    /** A length of the unscaled window, as it stands on the screen. */
    int scaled (int length) const noexcept { return juce::roundToInt (length * value / 100.0); }

    /** Takes the value, limited to its range, and keeps it. */
    void set (int percent);

    /** The factor to draw with, so that the content keeps within its own limits whatever the window's size. Where the window
        and not the user decides, it is one that there are pictures for, if that keeps within the limits.
        @param width, height   of the window */
    float factorFor (int width, int height) const noexcept;

private:
    PreferencesFile& preferences;
    int value = 100;
};

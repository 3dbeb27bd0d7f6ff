#pragma once

#include "support/xml/XmlPullParser.h"

#include <optional>
#include <vector>

/** A bank: which files lie on which pads. A value, and its XML form, UTF-8. */
struct SamplerBank
{
    static constexpr int padCount = 16;

    struct Sample
    {
        int slot = 0; ///< 0 to 15
        juce::String filePath, name;
        int playMode = 0;             ///< a SamplePlayMode
        bool followsVelocity = false; ///< soft presses are heard softly
        bool isUnsaved = false;       ///< a recorded loop that lies in the system's own file only

        bool operator== (const Sample&) const = default;
    };

    bool operator== (const SamplerBank&) const = default;

    juce::String name;
    std::vector<Sample> samples;

    /** Reads a document of any content. Pads that there are not are skipped, a mode that there is not is the first one; of
        two samples for one pad the later counts.
        @returns nothing if it is no bank. Any thread that may block. */
    static std::optional<SamplerBank> read (XmlPullParser);

    juce::String toXml() const;
};

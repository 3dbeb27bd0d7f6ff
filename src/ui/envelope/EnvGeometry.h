#pragma once

#include "instruments/envelope/Envelope.h"

#include <juce_graphics/juce_graphics.h>

/** The part of an envelope that is seen. */
struct EnvView
{
    juce::Range<double> time { 0.0, 4.0 };
    juce::Range<double> level { 0.0, 1.0 };
    bool operator== (const EnvView&) const = default;
};

/** Turns times and levels into pixels and back, and finds what lies under the pointer. A plain value. */
class EnvGeometry
{
public:
    static constexpr int margin = 6, handleSize = 13;

    /** @param area     of the plot with its margin
        @param border   of the margin, on each side */
    EnvGeometry (juce::Rectangle<float> area, EnvView, float border = margin);

    float x (double time) const noexcept;
    float y (double level) const noexcept;
    double time (float x) const noexcept;
    double level (float y) const noexcept;

    /** The plot without its margin. */
    juce::Rectangle<float> plot() const noexcept { return inside; }

    juce::Point<float> pointPlace (const Envelope&, int point) const noexcept;

    /** The handle of the segment that ends at a point: the middle of its width, at the height of its shape there.
        @param point   above 0 */
    juce::Point<float> tensionPlace (const Envelope&, int point) const noexcept;

    struct Hit
    {
        enum Kind
        {
            nothing,
            point,
            tension
        };

        Kind kind = nothing;
        int index = -1; ///< of the point, or of the point that ends the segment
        bool operator== (const Hit&) const = default;
    };

    /** Looks for points first, from the last one down, then for tension handles. */
    Hit hit (const Envelope&, juce::Point<float>) const noexcept;

    /** The segment that a time lies in, by the point that ends it; the point count beyond the last. */
    static int segmentAt (const Envelope&, double time) noexcept;

    /** The curve as a line: corners and steps stand where they are, bends are drawn in pieces.
        @param step   pixels of a piece */
    juce::Path path (const Envelope&, float step = 1.0f) const;

private:
    juce::Rectangle<float> inside;
    EnvView view;
};

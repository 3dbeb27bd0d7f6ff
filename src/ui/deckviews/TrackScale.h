#pragma once

#include "tracks/TrackOverview.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

/** Lays a track on the pixels of a screen: an entry of the waveform data, 512 frames, is `zoom` logical pixels wide and so
    `scale` times as many physical ones. Where that is no whole number the entries are one pixel wider or narrower in turn, always the
    same ones, so that a picture can be moved by whole pixels and stays as sharp as the screen. */
struct TrackScale
{
    double scale = 1.0; ///< physical pixels per logical pixel, above 0
    double zoom = 1.0;  ///< logical pixels per entry: a power of two, so that nothing is a matter of rounding

    bool operator== (const TrackScale&) const = default;

    /** Of a screen's own factor, to the next 1/1024: near enough that pictures are copied and not resampled, and short
        enough that the border between two columns is never a matter of rounding. */
    static TrackScale ofScreen (double physicalPerLogical, double zoom = 1.0) noexcept
    {
        return { std::max (1.0, std::round (physicalPerLogical * 1024.0)) / 1024.0, zoom };
    }

    /** Physical pixels of an entry. */
    double perEntry() const noexcept { return scale * zoom; }

    /** The entry that is drawn in a physical column, counted from the start of the track; the last one where a column holds
        several. */
    int64_t entryAt (int64_t column) const noexcept
    {
        return static_cast<int64_t> (std::ceil (static_cast<double> (column + 1) / perEntry())) - 1;
    }

    /** The first physical column of an entry. */
    int64_t columnOf (int64_t entry) const noexcept
    {
        return static_cast<int64_t> (std::floor (static_cast<double> (entry) * perEntry()));
    }

    /** The physical column that a place lies in. @param frame   of the file */
    int64_t columnAt (double frame) const noexcept
    {
        return static_cast<int64_t> (std::floor (frame / framesPerOverviewEntry * perEntry()));
    }

    /** A length in logical pixels, in physical ones. */
    int length (double logical) const noexcept { return static_cast<int> (std::lround (logical * scale)); }
};

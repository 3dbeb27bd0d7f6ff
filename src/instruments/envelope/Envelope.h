#pragma once

#include "instruments/envelope/EnvelopePoint.h"
#include "instruments/envelope/SegmentShape.h"
#include "support/AudioThread.h"

#include <juce_core/juce_core.h>

#include <array>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/** The segment that an envelope was last asked in, so that the next question in rising time finds its own at once. It
    never changes a result: one that does not fit is looked up again. */
struct EnvelopeCursor
{
    std::size_t segment = 1;
};

/** Why bytes or text give no envelope. */
enum class EnvelopeFault
{
    none,
    noHexText,     ///< the text is not made of pairs of hex digits
    cutOff,        ///< it ends before all that it announces
    otherFormat,   ///< it is of another program's kind of curve
    newerVersion,  ///< written by a later version
    tooManyPoints, ///< more than maxPoints, or fewer than none
    oddNumber      ///< a time or level that is no number, below zero or beyond all use
};

/** The fault as a sentence for the user, "" for none. */
const char* sentenceFor (EnvelopeFault);

/** A curve of breakpoints with a shape for each stretch between two: level over time.

    A plain value: an instrument owns its envelopes (EnvelopeBank), everybody else works on copies. Everything that
    depends on the points alone is derived by recalculate(), which must follow every change of a point; the functions that
    change points here call it themselves. evaluate() only reads, and is the one operation of the audio thread. */
class Envelope
{
public:
    static constexpr int maxPoints = 512;

    /** Two smooth points: level 0 at time 0, level 1 at time 4. */
    Envelope();

    /** Level at a time. 0 past the last point, and without points. */
    PX_AUDIO_THREAD double evaluate (double time) const noexcept;

    /** The same to the bit; quicker for times that rise from call to call. */
    PX_AUDIO_THREAD double evaluate (double time, EnvelopeCursor&) const noexcept;

    /** Derives all fields that follow from points and markers. A time that is no number, below 0 or beyond 1e9 becomes one
        that can be walked over. Any thread but the audio thread. */
    void recalculate() noexcept;

    int pointCount() const noexcept { return static_cast<int> (points.size()); }

    /** All points with their derived fields. */
    PX_AUDIO_THREAD std::span<const EnvelopePoint> allPoints() const noexcept { return points; }

    /** A point; EnvelopePoint's defaults for an index out of range. */
    EnvelopePoint point (int index) const noexcept;

    /** Replaces a point's stored fields. Nothing happens for an index out of range. */
    void setPoint (int index, const EnvelopePoint&);

    /** Replaces all points; those beyond maxPoints are left out. */
    void setPoints (std::span<const EnvelopePoint>);

    /** Appends points of EnvelopePoint's defaults, or removes the last ones. @param count   0 to maxPoints */
    void setPointCount (int count);

    /** Moves a point in time, limited to between its neighbours. The next one keeps its time: rounding never makes it
        earlier, since a curve that ends too early reads 0 at its end. Nothing happens to the last point, or for an index
        out of range. */
    void movePoint (int index, double time);

    /** Puts a point in front of another. Markers at or behind it move on by one. Nothing happens when the envelope is full.
        @param index   0 to pointCount() */
    void insertPoint (int index, const EnvelopePoint&);

    /** Takes a point out; the next one's delta grows, so that later points keep their times. Markers at or behind it move
        back by one. Nothing happens for an index out of range. */
    void deletePoint (int index);

    /** Time of a point since the envelope's start; 0 for a negative index, the last point's for one beyond it. */
    double absoluteTime (int index) const noexcept;

    /** Turns the levels upside down. */
    void flip();

    /** Scales the levels so that the greatest is 1, if it lies between 0 and 1. */
    void normalise();

    /** Takes over another envelope's points, tail flags and markers. */
    void assign (const Envelope&);

    /** Reads a blob of any version. One that is shorter than it announces leaves the remaining points at their defaults.
        @returns false, and leaves the envelope alone, for another format, a newer version or too many points */
    bool read (std::span<const std::uint8_t>);
    bool read (juce::InputStream&);

    /** Looks through a blob without reading it. Stricter than read(): for files, which change nothing unless they are whole
        and all their numbers can be used. */
    EnvelopeFault faultIn (std::span<const std::uint8_t>) const;

    /** Writes a blob of version 3. */
    std::vector<std::uint8_t> blob() const;
    void write (juce::OutputStream&) const;

    /** The blob as pairs of lower-case hex digits with single blanks between. */
    std::string toText() const;

    /** Reads such text if it is without fault, else leaves the envelope alone. */
    EnvelopeFault fromText (std::string_view);

    /** An element "Env" whose attribute "data" is the text. */
    std::unique_ptr<juce::XmlElement> toXml() const;

    /** Reads the attribute "data" of an element, as read() does. */
    bool fromXml (const juce::XmlElement&);

    /** True if everything that a blob stores is equal. */
    bool isSameCurve (const Envelope&) const;

    std::uint32_t colour = 0xff2db5ed; ///< to draw it in, as ARGB
    std::int32_t mode = 1;
    double scale = 1.0;
    double valueOffset = 0.0;
    bool clampValues = false;
    double clampLow = 0.0, clampHigh = 1.0;

    /** Stored without effect, but for the markers, which move with the points. */
    std::array<std::uint8_t, 4> tailFlags {};
    std::array<std::uint8_t, 3> tailReserved {};
    std::int32_t markerZero = 1, markerDecay = 1, markerLoopStart = -1, markerSustain = 2;
    std::int32_t format = 3;

    /** Derived; they don't enter evaluation. */
    bool loopDegenerate = false, hasSlidePoint = false, hasTailAfterSustain = false;

private:
    PX_AUDIO_THREAD double levelIn (std::size_t segment, double time) const noexcept;
    PX_AUDIO_THREAD bool isIn (std::size_t segment, double time) const noexcept;
    void deriveProgress() noexcept;
    void moveMarkers (int index, int step) noexcept;

    std::vector<EnvelopePoint> points;
};

#pragma once

#include "instruments/envelope/Envelope.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

/** Curves as a person writes them: points with commas between, each a place, a level, and the shape of the way there:

        0 0.5, 0.3 0.5 hold, 1 0.9 single -0.2

    Shapes are line (that of a point that names none), hold, single, double, stairs, smoothstairs, pulse, wave, alt, altdouble,
    sine and smooth, each followed by a tension from -1 to 1 where it needs one. Those that repeat take "x8" in its place:
    eight steps, pulses or waves; "x-8" is the other kind of the shape. */
namespace CurveText
{
/** Thrown for a text that is no curve; what() is one sentence. */
struct Fault : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/** Reads a level that is no number: a name that the place gives a meaning. @returns nothing for an unknown one */
using Names = std::function<std::optional<double> (std::string_view)>;

struct Ends
{
    double last;  ///< place of the last point
    double scale; ///< places to the envelope's time
};

/** Reads a curve. A level alone is a curve that stays there. Throws Fault. */
Envelope read (std::string_view text, const Ends&, const Names& = {});

/** A curve that holds one level and then another. */
Envelope step (double before, double place, double after, const Ends&);
}

#pragma once

/** The low-pass kernel of the resamplers: a sinc under Kaiser's window. Allocates nothing; not for inner loops. */
namespace KaiserSinc
{
/** Kaiser's formula for the shape of a window whose stop band lies `attenuationDb` (50 and above) below the pass band. */
double shape (double attenuationDb);

/** The window at a place of -1 to 1; 0 beyond. */
double window (double place, double shape);

/** sin (pi cutoff x) / (pi x): a low-pass whose gain is a half at `cutoff`, in units of half the rate. Exactly 0 at its
    zeros for a cutoff of 1. */
double sinc (double x, double cutoff);
}

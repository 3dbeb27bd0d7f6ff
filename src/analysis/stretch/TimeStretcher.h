#pragma once

#include "support/AudioThread.h"

/** A time stretcher with a fixed output block: tempo and key of a live stream, each on its own.

    A stretch factor is output length over input length; a pitch factor multiplies frequencies. Their product lies within
    0.1 and 10, both included; a pitch factor alone within 1/16 and 16.

    Owned and driven by one thread, the audio thread of its deck; only construction allocates. For each block:
    set the factors if they have changed, ask getFramesNeeded(), read exactly so many frames, process() them. */
class CElastiqueProIf
{
public:
    static constexpr int largestBlock = 1024;

    /** Any thread but the audio thread.
        @param blockSize    output frames per process(), 1 to 1024
        @param sampleRate   8000 to 384000 Hz
        @param mode         2 or 3: the whole spectrum in one; the other families are not built
        @returns 0; 5000003 for a block or mode that there is not, 5000004 for the rate, 5000005 for the channels (1 to 48),
                 1000001 without memory. `out` is null unless 0 is returned. */
    static int CreateInstance (CElastiqueProIf*& out, int blockSize, int channels, float sampleRate,
                               int mode);

    /** Null is allowed. */
    static void DestroyInstance (CElastiqueProIf*);

    virtual ~CElastiqueProIf() = default;

    /** Takes exactly getFramesNeeded() frames and gives one output block.
        @returns 0 for a full output block, -1 if the input was not enough: it is kept, and nothing is given */
    PX_AUDIO_THREAD virtual int process (const float* const* in, int frames, float* const* out) = 0;

    /** Input frames to give to the next process(). */
    PX_AUDIO_THREAD virtual int getFramesNeeded() = 0;

    /** @param frames   output frames per process() from now on, limited to 1 to 1024
        @returns the input frames to give to the next process() */
    PX_AUDIO_THREAD virtual int setOutputBlockSize (int frames) = 0;

    /** The getFramesNeeded() of these factors, without taking them; 0 for factors that are out of range. */
    PX_AUDIO_THREAD virtual int getFramesNeededFor (float stretch, float pitch) = 0;

    /** Sets both factors. The tempo holds at once, but for steps of up to 0.1 %: sound that is inside strays in key by the
        step until it has been played, within about 0.1 s. A key alone follows in that time, without a step.
        @param stretch     replaced by the one of the hops that are in force, which are whole and even; over time the
                           mean is the one asked for
        @param keepPhase   0 lines the first output up with the input; this engine always does
        @returns 0, or 5000003 with nothing changed when a factor is out of range */
    PX_AUDIO_THREAD virtual int setStretchPitch (float* stretch, float pitch, int keepPhase) = 0;

    /** As setStretchPitch, but writes the rounding of the hops into the pitch. */
    PX_AUDIO_THREAD virtual int setStretchAndPitch (float stretch, float* pitch, int keepPhase) = 0;

    /** Forgets all signal. The factors return to 1. */
    PX_AUDIO_THREAD virtual void reset() = 0;

    /** Begins in the midst of a sound, after a reset and before any input: it comes out at the factors from its first frame
        on, where a sound's own beginning would come out whole first. @param lead   the getLeadFrames() frames before it */
    PX_AUDIO_THREAD virtual void startInside (const float* const* lead) = 0;
    PX_AUDIO_THREAD virtual int getLeadFrames() = 0;

    /** Lets the next reset() go on at the whole input frame that is heard, in its sound and in the phases of its partials:
        so the old sound and the new one can be faded into each other.
        @param framesBack   output frames before the next block's first, at which that frame is heard */
    PX_AUDIO_THREAD virtual void keepTurns (int framesBack) = 0;

    /** The stretch that the next block's first frame was made for. Where it is not the one that is set, the key strays by
        their ratio. */
    PX_AUDIO_THREAD virtual double getStretchOfOutput() = 0;

    /** Plays out what the stretcher still holds, a block at a time.
        @returns frames of the block that hold signal, -1 if none are left */
    PX_AUDIO_THREAD virtual int flush (float* const* out) = 0;

    /** Input frames that the first process() after a reset takes at the present factors. */
    PX_AUDIO_THREAD virtual int getPreFramesNeeded() = 0;

    /** @param mode   0 works on middle and side, 1 on left and right. Holds from the next reset where signal is inside.
        @returns 0, or 5000002 unless there are two channels; 5000003 for another mode */
    PX_AUDIO_THREAD virtual int setStereoMode (int mode) = 0;

    /** Formants are not treated by the families that are built. @returns 0 */
    PX_AUDIO_THREAD virtual int setEnvelopeFactor (float factor) = 0;
    PX_AUDIO_THREAD virtual int setEnvelopeOrder (int order) = 0;

    /** The delay of the first sound after a reset, in output frames. */
    PX_AUDIO_THREAD virtual double getLatency() = 0;

    /** The input frame, counted from the last reset, that is heard in the first frame of the next output block. The frames
        given so far less this one is what the stretcher holds inside. Onsets come out where this says within 0.1 ms. */
    PX_AUDIO_THREAD virtual double getInputPositionOfOutput() = 0;

    /** The same as the factors alone would have it, without what onsets shift and the next hops make up. */
    PX_AUDIO_THREAD virtual double getIdealInputPositionOfOutput() = 0;
};

#pragma once

#include "timecode/filter/TickLanes.h"

/** Takes mains hum out of both channels of a control signal: 50 and 60 Hz with their third and fifth harmonics.

    Each tone's height and phase are learnt in each channel by the method of least mean squares while the carrier is far above
    them, and go on from there while a hand moves the record slowly or the needle is up. Audio thread; allocates nothing. */
class HumFilter
{
public:
    void prepare (double sampleRate, int framesInTick) noexcept;
    PX_AUDIO_THREAD void reset() noexcept;

    /** Corrects the frames of a tick.
        @param meanX, meanY  means of the tick's frames, corrected as well
        @param canLearn      a carrier turns evenly, at more than slowestHz */
    PX_AUDIO_THREAD void process (TickLanes& x, TickLanes& y, float& meanX, float& meanY,
                                  bool canLearn) noexcept;

    /** Level of what is taken out, root mean square. */
    PX_AUDIO_THREAD float levelX() const noexcept { return shareX.level(); }
    PX_AUDIO_THREAD float levelY() const noexcept { return shareY.level(); }

    static constexpr float slowestHz = 400;

private:
    /** Cosine and sine of each tone, and its share of a channel. */
    struct Share
    {
        TickLanes cosine, sine;
        float last = 0, power = 0; // of the signal
        PX_AUDIO_THREAD float level() const noexcept;
        PX_AUDIO_THREAD void take (const TickLanes& c, const TickLanes& s, TickLanes& lanes, float& mean,
                                   float learning, float perFrame) noexcept;
    };

    float learning = 0, perFrame = 1;
    TickLanes turnCosine, turnSine, cosine, sine;
    Share shareX, shareY;
    int ticksASecond = 7350, awakeTicks = 0, asleepTicks = 0;
};

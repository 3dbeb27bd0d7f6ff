#include "analysis/beats/BeatTrack.h"

#include "analysis/beats/bar/BarPhase.h"
#include "analysis/beats/onset/OnsetFunction.h"
#include "analysis/beats/tempo/BeatFold.h"
#include "analysis/beats/tempo/TempoComb.h"
#include "analysis/beats/tempo/TempoFollower.h"

#include <algorithm>
#include <cmath>

namespace
{
/** Following always sharpens the picture of a beat a little, by what chance offers: on music that keeps still by up to a
    seventh. It is taken where it gains clearly more than that, or something and keeps the onsets in their places through the
    song as the even pulse does not (one change of tempo leaves most of a song alone); where what it gives is the picture of a
    beat; and where the onsets repeat themselves along the way as noise and stray clicks do not. */
constexpr double clearGain = 1.3, leastGain = 1.1, steadierBy = 0.08, leastSharpness = 2.5,
                 leastAgreement = 0.25;

bool isBetter (const OnsetFunction& onsets, const TempoFollower::Result& followed, const Pulse& even)
{
    const auto sharpness = BeatFold (onsets, followed.pulse).sharpness();
    const auto gain = sharpness / BeatFold (onsets, even).sharpness();
    if (followed.agreement < leastAgreement || sharpness < leastSharpness || gain < leastGain)
        return false;
    return gain > clearGain || steadyShape (onsets, followed.pulse) > steadyShape (onsets, even) + steadierBy;
}

/** The greatest distance of the attacks from the beat of the onset functions, in frames: that much is certain of an onset
    function's frame; at low rates a frame is long. */
double attackReach (int sampleRate, int frameLength)
{
    return std::max (0.025 * sampleRate, 0.3 * frameLength);
}

Pulse pulseOf (const OnsetFunction& onsets, double bpm, int sampleRate)
{
    const TempoComb comb (onsets.positive, onsets.frameRate, bpm);
    const auto exact = comb.best();
    const Pulse even (onsets.origin, 60.0 * sampleRate / exact);
    if (const auto followed = TempoFollower::follow (onsets, exact))
        if (isBetter (onsets, *followed, even))
            return followed->pulse;
    return even;
}
}

CBeatTrack::CBeatTrack (const COnsetTracking& tracking, const CDownbeat& bars, int sampleRate,
                        double lengthFrames)
    : stage (tracking),
      downbeat (bars),
      rate (sampleRate),
      length (lengthFrames)
{
}

void CBeatTrack::track (double bpm, double startSeconds)
{
    beats.clear();
    const auto onsets = OnsetFunction::make (stage.intern(), 0, stage.intern().numFrames());
    auto pulse = pulseOf (onsets, bpm, rate);
    const auto bar = downbeat.barPhase (onsets, pulse);
    gridSigns.phaseMargin = bar.margin;
    gridSigns.constancy = steadyShape (onsets, pulse);
    pulse = pulse.movedBy (bar.beatOffset, 0.0);
    pulse = pulse.movedBy (
        0.0, attackDelay (stage.attacks(), pulse, attackReach (rate, stage.intern().frameLength())));

    const auto start = std::max (0.0, startSeconds * rate);
    // A beat that rounding puts just before the first frame is the first frame's.
    constexpr auto slack = 1e-6;
    for (auto half = static_cast<int> (std::ceil (2.0 * pulse.beatAt (start - 0.5) - slack));; ++half)
    {
        const auto position = std::max (0.0, pulse.at (0.5 * half));
        if (position >= length)
            break;
        const auto localBpm = 60.0 * rate / pulse.periodAt (0.5 * half);
        const auto index =
            std::clamp (std::lround (onsets.indexOf (position)), 0L, static_cast<long> (onsets.size()) - 1);
        beats.add ({ static_cast<int32_t> (std::lround (position)), half & 1, static_cast<float> (localBpm),
                     onsets.positive[static_cast<size_t> (index)] });
    }
    barMarks.clear();
    for (const auto beat : bar.bars.firsts)
    {
        const auto number = static_cast<double> (bar.firstBeat + beat);
        const auto position = std::max (0.0, pulse.at (number));
        if (number >= pulse.beatAt (start - 0.5) - slack && position < length)
            barMarks.add ({ static_cast<int32_t> (std::lround (position)), 0,
                            static_cast<float> (60.0 * rate / pulse.periodAt (number)), 0.0f });
    }
    const auto perBar = bar.bars.beatsPerBar;
    auto first = static_cast<double> (bar.downbeat());
    first += perBar * std::ceil ((pulse.beatAt (start - 0.5) - first) / perBar - slack);
    result.beatsPerPeriod = perBar;
    result.startPosition = pulse.at (first);
    result.beatPeriod = pulse.at (first + perBar) - result.startPosition;
}

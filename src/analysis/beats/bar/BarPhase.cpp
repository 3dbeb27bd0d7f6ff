#include "analysis/beats/bar/BarPhase.h"

#include "analysis/beats/onset/Periodicity.h"
#include "analysis/beats/tempo/BeatFold.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace
{
constexpr int maxCandidates = 4;

/** A change that is no larger than this, in the units of HarmonicChange, tells nothing. */
constexpr double changeFloor = 4.0;
constexpr double changeWeight = 2.0, drumWeight = 0.1;

/** The bass enters on beats more than between them: for each decibel that it rises by on average. */
constexpr double bassWeight = 0.02;

/** A bar of three has to be this much more like its neighbours than one of four. */
constexpr double ternaryMargin = 0.1;

struct Candidate
{
    double offset = 0.0, height = 0.0;
};

std::vector<Candidate> peaksOf (const BeatFold& fold)
{
    std::vector<Candidate> peaks;
    for (size_t b = 0; b < BeatFold::numBins; ++b)
    {
        const auto before = fold.at (b + BeatFold::numBins - 1), here = fold.at (b), after = fold.at (b + 1);
        if (!(here > before && here >= after))
            continue;
        const auto curve = before - 2.0 * here + after; // a parabola's vertex through the three
        const auto shift = curve < 0.0 ? std::clamp (0.5 * (before - after) / curve, -0.5, 0.5) : 0.0;
        peaks.push_back ({ (static_cast<double> (b) + shift) / BeatFold::numBins, here });
    }
    std::stable_sort (peaks.begin(), peaks.end(), [] (auto& a, auto& b) { return a.height > b.height; });
    if (peaks.size() > maxCandidates)
        peaks.resize (maxCandidates);
    return peaks;
}

/** The features of one beat. */
struct BeatSigns
{
    double change = 0.0, bassRise = 0.0;
    OnsetFunction::Bands onset {};
};

/** The beats of an offset, from the first that the onset function tells of. */
struct Beats
{
    int first = 0;
    std::vector<BeatSigns> signs;
};

Beats beatsOf (const OnsetFunction& onsets, const HarmonicChange& harmony, const BarPhase::Bass& bass,
               const Pulse& pulse, double offset)
{
    constexpr auto reachSeconds = 0.0116; // of a player from the beat
    const auto reach = COnsetTrackingIntern::framesIn (reachSeconds, onsets.frameRate);
    Beats made;
    const auto first = static_cast<int> (std::ceil (pulse.beatAt (onsets.positionOf (reach)) - offset));
    const auto last =
        static_cast<int> (std::floor (pulse.beatAt (onsets.positionOf (onsets.size() - 1 - reach)) - offset));
    made.first = first;
    for (int k = first; k <= last; ++k)
    {
        const auto position = pulse.at (k + offset);
        const auto index = std::clamp (static_cast<int> (std::lround (onsets.indexOf (position))), reach,
                                       std::max (reach, onsets.size() - 1 - reach));
        auto& beat = made.signs.emplace_back();
        beat.change = harmony.at (position, pulse.periodAt (k + offset));
        beat.bassRise = bass.intensity.riseAt (position / bass.factor);
        for (size_t b = 0; b < beat.onset.size(); ++b)
        {
            beat.onset[b] = onsets.bands[static_cast<size_t> (index - reach)][b];
            for (int i = index - reach + 1; i <= index + reach; ++i)
                beat.onset[b] = std::max (beat.onset[b], onsets.bands[static_cast<size_t> (i)][b]);
        }
    }
    return made;
}

/** The means of the features of beats by their place in a bar. */
struct BarProfile
{
    std::vector<double> change, bassRise;
    std::vector<OnsetFunction::Bands> onset;
};

int placeOf (int beat, int beatsPerBar)
{
    return (beat % beatsPerBar + beatsPerBar) % beatsPerBar;
}

BarProfile profileOf (const Beats& beats, int beatsPerBar)
{
    const auto bar = static_cast<size_t> (beatsPerBar);
    BarProfile made { std::vector<double> (bar, 0.0), std::vector<double> (bar, 0.0),
                      std::vector<OnsetFunction::Bands> (bar) };
    std::vector<double> count (bar, 1e-9);
    for (size_t k = 0; k < beats.signs.size(); ++k)
    {
        const auto& beat = beats.signs[k];
        const auto place = static_cast<size_t> (placeOf (beats.first + static_cast<int> (k), beatsPerBar));
        count[place] += 1.0;
        made.change[place] += beat.change;
        made.bassRise[place] += beat.bassRise;
        for (size_t b = 0; b < beat.onset.size(); ++b)
            made.onset[place][b] += beat.onset[b];
    }
    for (size_t i = 0; i < bar; ++i)
    {
        made.change[i] /= count[i];
        made.bassRise[i] /= count[i];
        for (auto& b : made.onset[i])
            b /= static_cast<float> (count[i]);
    }
    return made;
}

BarTrack::Bars barsOf (const Beats& beats)
{
    std::vector<BarTrack::Beat> signs;
    signs.reserve (beats.signs.size());
    for (const auto& beat : beats.signs)
        signs.push_back ({ beat.change, beat.bassRise, static_cast<double> (beat.onset[2] + beat.onset[3]) });
    return BarTrack::follow (signs);
}

/** The fit of the drums to a bar of four that begins at a beat: bass on the odd beats, snare on the even ones. Bounded, since
    a strong drum is no better evidence than a plain one. */
double drumEvidence (const BarProfile& profile, size_t downbeat)
{
    auto bass = 0.0, snare = 0.0;
    for (size_t i = 0; i < 4; ++i)
    {
        const auto& onset = profile.onset[(downbeat + i) % 4];
        const auto sign = i % 2 == 0 ? 1.0 : -1.0;
        bass += sign * profile.bassRise[(downbeat + i) % 4];
        snare -= sign * (onset[2] + onset[3]);
    }
    return std::tanh (bass / 12) + std::tanh (snare / 4);
}

bool isTernary (const OnsetFunction& onsets, const Pulse& pulse)
{
    const auto middle = 0.5 * onsets.size();
    const auto beat = pulse.periodAt (pulse.beatAt (onsets.positionOf (middle)));
    const auto seconds = beat / COnsetTrackingIntern::hop / onsets.frameRate;
    const Periodicity self (onsets.sum, onsets.frameRate, 9 * seconds);
    return self.at (3 * seconds) + self.at (6 * seconds)
           > self.at (4 * seconds) + self.at (8 * seconds) + ternaryMargin;
}
}

int BarPhase::downbeat() const
{
    return placeOf (firstBeat + bars.downbeat, bars.beatsPerBar);
}

BarPhase BarPhase::find (const OnsetFunction& onsets, const HarmonicChange& harmony, const Bass& bass,
                         const Pulse& pulse)
{
    BarPhase best;
    Beats bestBeats;
    const auto beatsPerBar = isTernary (onsets, pulse) ? 3 : 4;
    auto bestScore = -1e9, nextScore = -1e9;
    for (const auto& candidate : peaksOf (BeatFold (onsets, pulse)))
    {
        auto beats = beatsOf (onsets, harmony, bass, pulse, candidate.offset);
        const auto profile = profileOf (beats, beatsPerBar);
        // A change at each of its beats alike is the sound of a drum, not the notes.
        const auto least = *std::min_element (profile.change.begin(), profile.change.end());
        const auto bassRises =
            std::accumulate (profile.bassRise.begin(), profile.bassRise.end(), 0.0) / beatsPerBar;
        auto score = -1e9;
        for (size_t d = 0; d < profile.change.size(); ++d)
        {
            const auto drums = beatsPerBar == 4 ? drumWeight * drumEvidence (profile, d) : 0.0;
            score = std::max (score, std::log (candidate.height + 1e-6) + drums + bassWeight * bassRises
                                         + changeWeight * std::log (profile.change[d] - least + changeFloor));
        }
        nextScore = std::max (nextScore, std::min (score, bestScore));
        if (score <= bestScore)
            continue;
        bestScore = score;
        best.beatOffset = candidate.offset;
        bestBeats = std::move (beats);
    }
    best.margin = bestScore - nextScore;
    best.firstBeat = bestBeats.first;
    best.bars = barsOf (bestBeats);
    return best;
}

#include "analysis/beats/TaktEngine.h"

#include "analysis/AnalysisError.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
constexpr int marksPerBeat = 2;

/** Anything louder comes from a broken file, and its square might overflow. */
constexpr float loudest = 1e6f;
}

int TaktEngine::init (int sampleRate, int channels)
{
    rate = sampleRate;
    numChannels = channels;
    mono.reserve (slice);
    if (const auto error = onsets.init (sampleRate, channels); error != AnalysisError::none)
        return error;
    return bars.init (sampleRate, channels);
}

int TaktEngine::process (const float* const* channels, int frames)
{
    if (flushed)
        return AnalysisError::wrongState;
    if (frames < 0 || channels == nullptr
        || std::any_of (channels, channels + numChannels, [] (auto* c) { return c == nullptr; }))
        return AnalysisError::badArgument;
    if (totalFrames + frames > std::numeric_limits<int32_t>::max())
        return AnalysisError::badArgument; // beyond what a mark can tell
    for (int done = 0; done < frames;)
    {
        // Slices are cut by the place in the signal, so that results don't depend on the caller's blocks.
        const auto room = slice - static_cast<int> (mono.size());
        const auto count = std::min (room, frames - done);
        const auto held = mono.size();
        mono.resize (held + static_cast<size_t> (count), 0.0f);
        auto* sum = mono.data() + held;
        for (int c = 0; c < numChannels; ++c)
            for (int i = 0; i < count; ++i)
                sum[i] += channels[c][done + i];
        for (int i = 0; i < count; ++i)
            sum[i] = std::abs (sum[i]) < loudest ? sum[i] : 0.0f; // 0 for NaN, too
        done += count;
        if (mono.size() == slice)
            passOn();
    }
    totalFrames += frames;
    return AnalysisError::none;
}

void TaktEngine::passOn()
{
    onsets.process (mono);
    bars.process (mono);
    take (mono);
    mono.clear();
}

int TaktEngine::flush (bool finished)
{
    if (flushed)
        return AnalysisError::wrongState;
    passOn();
    flushed = true;
    onsets.flush();
    bars.flush();
    tempo = estimate = 0.0f;
    beatTrack = std::make_unique<CBeatTrack> (onsets, bars, rate, static_cast<double> (totalFrames));
    if (finished && hasRhythm())
        concludeTempo();
    return AnalysisError::none;
}

float TaktEngine::getNormalisedTempo() const
{
    auto bpm = hasResult() ? tempo : 0.0f;
    while (bpm > 180.0f)
        bpm /= 2.0f;
    while (bpm > 0.0f && bpm < 65.0f)
        bpm *= 2.0f;
    return bpm;
}

int TaktEngine::getResult (Result* out) const
{
    if (out == nullptr)
        return AnalysisError::badArgument;
    if (!hasResult())
        return AnalysisError::wrongState;
    *out = { tempo,
             marks.count(),
             CBeatTrack::numHypotheses,
             framesInSegment,
             static_cast<float> (best.weight),
             best.startPosition,
             best.beatPeriod };
    return AnalysisError::none;
}

int TaktEngine::setResult (const Result& result, const Beat* beats)
{
    const auto period = 60.0 * rate / static_cast<double> (result.tempo);
    if (!(result.tempo > 0.0f) || !(result.beatPeriod > 0.0) || result.beats < 0
        || (result.beats > 0 && beats == nullptr))
        return AnalysisError::badArgument;
    flushed = resultValid = true;
    tempo = estimate = result.tempo;
    framesInSegment = result.framesInSegment;
    best.beatPeriod = result.beatPeriod;
    best.startPosition = result.startPosition;
    best.weight = result.weight;
    best.beatsPerPeriod =
        std::max (1, static_cast<int> (std::min (std::round (result.beatPeriod / period), 1e3)));
    marks.clear();
    for (int i = 0; i < result.beats; ++i)
        marks.add ({ beats[i].position, 0, static_cast<float> (beats[i].bpm),
                     static_cast<float> (beats[i].strength) });
    return AnalysisError::none;
}

int TaktEngine::setTempo (float bpm)
{
    if (!(bpm >= 20.0f && bpm <= 400.0f))
        return AnalysisError::badArgument;
    tempo = bpm;
    return AnalysisError::none;
}

int TaktEngine::trackBeats (float startSeconds, int, int, int)
{
    if (!std::isfinite (startSeconds))
        return AnalysisError::badArgument;
    if (beatTrack == nullptr || !hasRhythm() || tempo <= 0.0f)
        return AnalysisError::wrongState;
    layMarks (startSeconds);
    resultValid = true;
    return AnalysisError::none;
}

void TaktEngine::layMarks (float startSeconds)
{
    beatTrack->track (tempo, startSeconds);
    marks = beatTrack->marks();
    const auto confidence = best.confidence, margin = best.margin, weight = best.weight;
    best = beatTrack->bar();
    best.confidence = confidence;
    best.margin = margin;
    best.weight = weight;
}

int TaktEngine::getConfidence() const
{
    if (!resultValid || beatTrack == nullptr || marks.count() == 0)
        return -1;
    auto signs = beatTrack->signs();
    signs.tempoFit = best.confidence;
    signs.tempoMargin = best.margin;
    return signs.confidence();
}

const CBeatMarksIf* TaktEngine::listOf (int list) const
{
    if (!resultValid)
        return nullptr;
    if (list == beatList)
        return &marks;
    if (list == barList)
        return beatTrack != nullptr ? &beatTrack->bars() : nullptr;
    return list == onsetList ? &onsets.intern().marks() : nullptr;
}

int TaktEngine::getNumberOfBeats (int list) const
{
    const auto* found = listOf (list);
    return found != nullptr ? found->count() : 0;
}

double TaktEngine::getAverageTempo (int list) const
{
    if (list == onsetList)
        return tempo;
    constexpr auto binBpm = 10.0;
    auto lowest = 500.0, highest = 0.0;
    for (int i = 0; i < getNumberOfBeats (beatList); ++i)
    {
        lowest = std::min (lowest, static_cast<double> (marks.at (i).bpm));
        highest = std::max (highest, static_cast<double> (marks.at (i).bpm));
    }
    if (highest <= 0.0 || !(highest - lowest < 1e4))
        return 0.0;
    const auto binOf = [&] (double bpm) { return static_cast<size_t> ((bpm - lowest) / binBpm + 0.5); };
    std::vector<int> histogram (binOf (highest) + 1, 0);
    for (int i = 0; i < marks.count(); ++i)
        ++histogram[binOf (marks.at (i).bpm)];
    const auto fullest = std::max_element (histogram.begin(), histogram.end()) - histogram.begin();
    const auto from = lowest + binBpm * static_cast<double> (fullest) - binBpm / 2, to = from + 2 * binBpm;
    auto sum = 0.0;
    auto count = 0;
    for (int i = 0; i < marks.count(); ++i)
        if (const double bpm = marks.at (i).bpm; bpm >= from && bpm <= to)
        {
            sum += bpm;
            ++count;
        }
    return count > 0 ? sum / count : 0.0;
}

int TaktEngine::getBeatsPerBar (int list) const
{
    if (list != beatList || !resultValid || !best.isKnown() || marks.count() == 0)
        return -1;
    const auto from = marks.nearest (best.startPosition);
    auto distance = (marks.nearest (best.startPosition + best.beatPeriod) - from) / marksPerBeat;
    if (distance <= 0) // the bar runs beyond the last mark
        distance = best.beatsPerPeriod;
    while (distance % 12 == 0)
        distance /= 3;
    return distance;
}

int TaktEngine::getDownbeatIndex (int list, int beatsPerBar) const
{
    if (list != beatList || !resultValid || !best.isKnown())
        return -1;
    const auto bar = beatsPerBar > 0 ? beatsPerBar : getBeatsPerBar (list);
    const auto nearest = marks.nearest (best.startPosition);
    return bar > 0 && nearest >= 0 ? nearest % (marksPerBeat * bar) : -1;
}

int TaktEngine::getBeat (Beat* out, int index, int list) const
{
    const auto* found = listOf (list);
    if (out == nullptr || found == nullptr || index < 0 || index >= found->count())
        return AnalysisError::badArgument;
    const auto& mark = found->at (index);
    *out = { mark.position, mark.bpm, mark.strength };
    return AnalysisError::none;
}

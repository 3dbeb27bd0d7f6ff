#pragma once

#include "analysis/beats/Takt.h"

#include <cmath>
#include <functional>
#include <memory>
#include <numbers>
#include <random>
#include <string>
#include <vector>

/** Drum tracks of which every beat is known, and a tracker to lay over them. */
namespace Rhythm
{
/** One bar of sixteenths (or of as many steps as the strings are long): strokes where there is an x. */
struct Bar
{
    int beats = 4;
    std::string kick, snare, hat;
    bool chords = true; ///< a new one in each bar
    double swing = 0.0; ///< how late every second step is, in steps
};

struct Track
{
    std::vector<float> samples;
    std::vector<double> beats; ///< in frames
};

inline void add (std::vector<float>& out, double at, double seconds, double rate,
                 const std::function<double (double)>& wave)
{
    const auto first = static_cast<int> (std::ceil (at));
    for (int i = first; i < first + static_cast<int> (seconds * rate); ++i)
        if (i >= 0 && i < static_cast<int> (out.size()))
            out[static_cast<size_t> (i)] += static_cast<float> (wave ((i - at) / rate));
}

/** @param beatFrames   position of a beat, whole or not, in frames; beat 0 is a downbeat
    @param firstChord   which of the four chords comes first */
inline Track play (const Bar& bar, double seconds, double rate,
                   const std::function<double (double)>& beatFrames, int firstChord = 0)
{
    Track track { std::vector<float> (static_cast<size_t> (seconds * rate), 0.0f), {} };
    const auto end = static_cast<double> (track.samples.size());
    std::mt19937 random (7);
    const auto noise = [&] { return static_cast<double> (random()) / 2147483648.0 - 1.0; };
    constexpr auto turn = 2.0 * std::numbers::pi;
    const auto steps = static_cast<int> (std::max ({ bar.kick.size(), bar.snare.size(), bar.hat.size() }));
    for (int step = 0;; ++step)
    {
        const auto late = step % 2 == 1 ? bar.swing : 0.0;
        const auto at = beatFrames ((step + late) * bar.beats / steps);
        if (at >= end)
            break;
        const auto i = static_cast<size_t> (step % steps);
        const auto has = [i] (const std::string& line) { return i < line.size() && line[i] == 'x'; };
        if (has (bar.kick))
            add (track.samples, at, 0.2, rate,
                 [&] (double t) {
                     return 0.5 * std::exp (-t / 0.05) * std::cos (turn * 55 * t)
                            + 0.2 * std::exp (-t / 0.002) * noise();
                 });
        if (has (bar.snare))
            add (track.samples, at, 0.15, rate,
                 [&] (double t)
                 { return 0.3 * std::exp (-t / 0.04) * (noise() + std::sin (turn * 190 * t)); });
        if (has (bar.hat))
            add (track.samples, at, 0.05, rate,
                 [&] (double t) { return 0.1 * std::exp (-t / 0.01) * noise(); });
    }
    for (int beat = 0; beatFrames (beat) < end; ++beat)
    {
        track.beats.push_back (beatFrames (beat));
        if (!bar.chords || beat % bar.beats != 0)
            continue;
        const auto length = (beatFrames (beat + bar.beats) - beatFrames (beat)) / rate;
        for (const auto semitones : { 0, 4, 7 })
        {
            const auto hz =
                220.0
                * std::exp2 (
                    (semitones
                     + std::vector<int> { 0, 5, 7,
                                          3 }[static_cast<size_t> ((beat / bar.beats + firstChord) % 4)])
                    / 12.0);
            add (track.samples, beatFrames (beat), length, rate,
                 [&] (double t) {
                     return 0.05 * std::min ({ 1.0, t / 0.01, (length - t) / 0.01 })
                            * std::sin (turn * hz * t);
                 });
        }
    }
    return track;
}

inline std::function<double (double)> steady (double bpm, double rate, double firstSeconds = 0.0)
{
    return [=] (double beat) { return (firstSeconds + beat * 60.0 / bpm) * rate; };
}

/** Bars of different lengths in beats, one after another: a kick on each beat, a new chord on each first. */
inline std::vector<float> playBars (const std::vector<int>& lengths, double bpm, double rate)
{
    std::vector<float> samples;
    for (size_t i = 0; i < lengths.size(); ++i)
    {
        const Bar bar { lengths[i], std::string (static_cast<size_t> (lengths[i]), 'x'), "", "" };
        const auto seconds = lengths[i] * 60.0 / bpm;
        const auto one = play (bar, seconds, rate, steady (bpm, rate), static_cast<int> (i)).samples;
        samples.insert (samples.end(), one.begin(), one.end());
    }
    return samples;
}

struct Free
{
    void operator() (CaufTAKT_If* tracker) const { CaufTAKT_If::DestroyInstance (&tracker); }
};
using Tracker = std::unique_ptr<CaufTAKT_If, Free>;

inline Tracker make (double rate, int channels = 1, int engine = 1)
{
    CaufTAKT_If* made = nullptr;
    CaufTAKT_If::CreateInstance (&made, static_cast<int> (rate), channels, engine);
    return Tracker (made);
}

inline void feed (CaufTAKT_If& tracker, const std::vector<float>& samples, int channels = 1, int block = 4096)
{
    for (size_t at = 0; at < samples.size(); at += static_cast<size_t> (block))
    {
        const std::vector<const float*> pointers (static_cast<size_t> (channels), samples.data() + at);
        tracker.process (pointers.data(),
                         static_cast<int> (std::min (samples.size() - at, static_cast<size_t> (block))));
    }
}

inline Tracker analyse (const std::vector<float>& samples, double rate, int channels = 1, int engine = 1,
                        int block = 4096)
{
    auto tracker = make (rate, channels, engine);
    feed (*tracker, samples, channels, block);
    tracker->flush (true);
    tracker->trackBeats (0.0f, 0, 0, 0);
    return tracker;
}

/** The marks on the beat, in frames. */
inline std::vector<double> beatsOf (const CaufTAKT_If& tracker)
{
    std::vector<double> beats;
    CaufTAKT_If::Beat beat;
    const auto downbeat = tracker.getDownbeatIndex (0, 0);
    for (int i = downbeat % 2; downbeat >= 0 && tracker.getBeat (&beat, i, 0) == 0; i += 2)
        beats.push_back (beat.position);
    return beats;
}

/** The share of beats with a mark within some milliseconds. */
inline double hits (const std::vector<double>& beats, const std::vector<double>& marks, double ms,
                    double rate)
{
    auto hit = 0;
    for (const auto beat : beats)
        for (const auto mark : marks)
            if (std::abs (mark - beat) <= ms * rate / 1000.0)
            {
                ++hit;
                break;
            }
    return static_cast<double> (hit) / static_cast<double> (beats.size());
}
}

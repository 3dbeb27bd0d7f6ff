#include "demo/FirstBank.h"

#include "demo/Filter.h"
#include "demo/Patches.h"
#include "instruments/sampler/SamplerBank.h"
#include "instruments/sampler/SamplerSlot.h"
#include "instruments/sampler/sample/SampleFile.h"
#include "support/FadeCurve.h"
#include "support/files/ReplaceFile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

namespace
{
constexpr double rate = 44100.0;
constexpr float peak = 0.8f;

/** A row of strokes, a character to a sixteenth: "x" strikes, "o" softly. */
struct Part
{
    const DrumPatch* patch;
    const char* pattern;
    double gain;
};

/** A loop of so many beats, whose last strokes ring on into its begin. */
Shot loopOf (int beats, double bpm, std::initializer_list<Part> parts)
{
    const auto frames = static_cast<size_t> (std::lround (beats * 60.0 / bpm * rate));
    Shot made { std::vector<float> (frames), std::vector<float> (frames) };
    const auto steps = 4 * beats;
    for (const auto& part : parts)
    {
        const std::string_view pattern (part.pattern);
        for (int step = 0; step < steps; ++step)
        {
            const auto sign = pattern[static_cast<size_t> (step) % pattern.size()];
            if (sign != 'x' && sign != 'o')
                continue;
            const auto shot = renderDrum (*part.patch, 7 + step);
            const auto gain = static_cast<float> (part.gain * (sign == 'x' ? 1.0 : 0.4));
            const auto at = static_cast<size_t> (std::lround (step * static_cast<double> (frames) / steps));
            for (size_t i = 0; i < shot.frames(); ++i)
            {
                const auto right = shot.right.empty() ? shot.left[i] : shot.right[i];
                made.left[(at + i) % frames] += gain * shot.left[i];
                made.right[(at + i) % frames] += gain * right;
            }
        }
    }
    return made;
}

/** A voice-like stab: a buzz with vibrato through three formants that glide from one vowel to another. */
Shot voiceOf (double note, const std::array<double, 3>& from, const std::array<double, 3>& to, double seconds)
{
    Shot made;
    made.left.resize (static_cast<size_t> (seconds * rate));
    std::array<Filter, 3> formants;
    constexpr std::array gains { 1.0, 0.6, 0.3 };
    double phase = 0.0, vibrato = 0.0;
    const auto decay = PortableMath::decayPerSample (0.35 * seconds, rate);
    auto level = 1.0;
    for (size_t i = 0; i < made.left.size(); ++i, level *= decay)
    {
        const auto part = static_cast<double> (i) / static_cast<double> (made.left.size());
        vibrato += 5.5 / rate;
        vibrato -= std::floor (vibrato);
        const auto bend =
            0.25 * PortableMath::sine (vibrato) * part - 1.5 * (1.0 - std::min (1.0, part * 12.0));
        phase += PortableMath::noteHz (note + bend) / rate;
        phase -= std::floor (phase);
        const auto buzz = 1.0 - 2.0 * phase;
        auto sum = 0.0;
        for (size_t f = 0; f < formants.size(); ++f)
        {
            if (i % 16 == 0)
                formants[f].tune ((from[f] + (to[f] - from[f]) * std::min (1.0, 2.0 * part)) / rate, 9.0);
            sum += gains[f] * formants[f].bandPass (buzz);
        }
        const auto attack = std::min (1.0, static_cast<double> (i) / (0.004 * rate));
        made.left[i] = static_cast<float> (PortableMath::softClip (2.0 * sum) * level * attack);
    }
    return made;
}

constexpr std::array ah { 730.0, 1090.0, 2440.0 }, oh { 570.0, 840.0, 2410.0 }, ee { 270.0, 2290.0, 3010.0 },
    eh { 530.0, 1840.0, 2480.0 };

/** Tones of a chord, struck together. */
Shot chordOf (const TonePatch& patch, std::initializer_list<int> notes, double seconds)
{
    Shot made;
    for (const auto note : notes)
    {
        const auto tone = renderTone (patch, note, static_cast<int> (seconds * rate), note);
        made.left.resize (std::max (made.left.size(), tone.frames()));
        made.right.resize (made.left.size());
        for (size_t i = 0; i < tone.frames(); ++i)
        {
            made.left[i] += tone.left[i];
            made.right[i] += tone.right.empty() ? tone.left[i] : tone.right[i];
        }
    }
    return made;
}

/** A loop of so many beats out of a sound that goes on: the sound's first half second leads into the loop's begin, and its
    end fades over to that. */
Shot heldLoop (int beats, double bpm, Shot sound)
{
    const auto frames = static_cast<size_t> (std::lround (beats * 60.0 / bpm * rate));
    const auto lead = static_cast<size_t> (0.5 * rate);
    for (auto* side : { &sound.left, &sound.right })
    {
        if (side->empty())
            continue;
        side->resize (lead + frames);
        for (size_t i = 0; i < lead; ++i)
        {
            const auto part = (static_cast<double> (i) + 0.5) / static_cast<double> (lead);
            auto& end = (*side)[frames + i];
            end = static_cast<float> (end * std::sqrt (1.0 - part) + (*side)[i] * std::sqrt (part));
        }
        side->erase (side->begin(), side->begin() + static_cast<std::ptrdiff_t> (lead));
    }
    return sound;
}

/** Fades the end of a hit out, which its file cuts off. */
void fadeEnd (Shot& shot)
{
    const auto length = std::min (shot.frames(), static_cast<size_t> (0.06 * rate));
    for (auto* side : { &shot.left, &shot.right })
        for (size_t i = 0; i < std::min (length, side->size()); ++i)
            (*side)[side->size() - 1 - i] *=
                static_cast<float> (FadeCurve::at (static_cast<double> (i) / static_cast<double> (length)));
}

struct Sound
{
    const char* name;
    SamplePlayMode mode;
    int beats; ///< 0 for a hit
    double bpm;
    std::function<Shot()> render;
};

const std::array<Sound, SamplerBank::padCount>& sounds()
{
    using namespace Patches;
    static const std::array<Sound, SamplerBank::padCount> all {
        Sound { "Kick", retriggerMode, 0, 0.0, [] { return renderDrum (kickHard, 1); } },
        Sound { "Snare", retriggerMode, 0, 0.0, [] { return renderDrum (snareCrack, 2); } },
        Sound { "Clap", retriggerMode, 0, 0.0, [] { return renderDrum (clap, 3); } },
        Sound { "Open Hat", retriggerMode, 0, 0.0, [] { return renderDrum (hatOpen, 4); } },
        Sound { "Crash", retriggerMode, 0, 0.0, [] { return renderCrash (3.0, 5); } },
        Sound { "Riser", oneShotMode, 0, 0.0, [] { return renderRiser (4.0, 6); } },
        Sound { "Stab", retriggerMode, 0, 0.0,
                [] {
                    return chordOf (dubStab, { 57, 60, 64, 67 }, 0.25);
                } },
        Sound { "Bell", retriggerMode, 0, 0.0,
                [] {
                    return chordOf (bell, { 76, 83 }, 0.5);
                } },
        Sound { "Ah", retriggerMode, 0, 0.0, [] { return voiceOf (57.0, ah, ah, 0.7); } },
        Sound { "Oh Ee", retriggerMode, 0, 0.0, [] { return voiceOf (52.0, oh, ee, 0.9); } },
        Sound { "Hey", retriggerMode, 0, 0.0, [] { return voiceOf (64.0, eh, ee, 0.35); } },
        Sound { "Pad Hold", triggerMode, 4, 120.0,
                [] {
                    return heldLoop (4, 120.0, chordOf (sawPad, { 45, 57, 60, 64 }, 2.5));
                } },
        Sound { "Hats", loopMode, 1, 124.0,
                [] {
                    return loopOf (1, 124.0, { { &hatClosed, "xoxo", 0.8 }, { &hatOpen, "..x.", 0.5 } });
                } },
        Sound { "Congas", loopMode, 2, 126.0,
                [] {
                    return loopOf (2, 126.0, { { &conga, "x..o.x.x", 0.9 }, { &shaker, "xoxoxoxo", 0.5 } });
                } },
        Sound { "House", loopMode, 4, 128.0,
                []
                {
                    return loopOf (4, 128.0,
                                   { { &kickRound, "x...", 1.0 },
                                     { &clap, "....x...", 0.7 },
                                     { &hatOpen, "..x.", 0.5 },
                                     { &shaker, "xoxo", 0.3 } });
                } },
        Sound { "Break", loopMode, 8, 174.0,
                []
                {
                    return loopOf (8, 174.0,
                                   { { &kickTight, "x.........x.....x.x.......x.....", 1.0 },
                                     { &snareCrack, "....x..o.o..x.......x..o.o..x..o", 0.9 },
                                     { &hatClosed, "x.x.", 0.5 } });
                } },
    };
    return all;
}

void normalise (Shot& shot)
{
    if (shot.right.empty())
        shot.right = shot.left;
    auto most = 1.0e-6f;
    for (const auto* side : { &shot.left, &shot.right })
        for (const auto sample : *side)
            most = std::max (most, std::abs (sample));
    for (auto* side : { &shot.left, &shot.right })
        for (auto& sample : *side)
            sample *= peak / most;
}

bool write (const juce::File& file, const Sound& sound)
{
    auto shot = sound.render();
    if (sound.beats > 0)
    {
        const auto frames = static_cast<size_t> (std::lround (sound.beats * 60.0 / sound.bpm * rate));
        shot.left.resize (frames);
        if (!shot.right.empty())
            shot.right.resize (frames);
    }
    else
    {
        fadeEnd (shot);
    }
    normalise (shot);
    SampleFacts facts;
    facts.lengthFrames = static_cast<int32_t> (shot.frames());
    facts.bpm = sound.bpm;
    facts.beats = 2.0 * sound.beats;
    return SampleFile::write (file, shot.left.data(), shot.right.data(), facts, 0.0);
}
}

juce::File firstBankFile (const juce::File& samples)
{
    return samples.getChildFile ("First Bank.xml");
}

juce::String writeFirstBank (const juce::File& samples)
{
    const auto folder = samples.getChildFile ("First Bank");
    juce::String fault = "The first bank can't be written to " + samples.getFullPathName() + ".";
    if (folder.createDirectory().failed())
        return fault;
    SamplerBank bank;
    bank.name = "First Bank";
    for (int pad = 0; pad < SamplerBank::padCount; ++pad)
    {
        const auto& sound = sounds()[static_cast<size_t> (pad)];
        const auto file =
            folder.getChildFile (juce::String (pad + 1).paddedLeft ('0', 2) + " " + sound.name + ".wav");
        if (!file.exists() && !write (file, sound))
            return fault;
        bank.samples.push_back ({ pad, file.getFullPathName(), sound.name, sound.mode });
    }
    const auto target = firstBankFile (samples);
    const auto xml = bank.toXml();
    return target.exists() || replaceFile (target, xml.toRawUTF8(), xml.getNumBytesAsUTF8()) ? juce::String()
                                                                                             : fault;
}

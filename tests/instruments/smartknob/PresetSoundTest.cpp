// Each preset is heard at three places of its knob, by a made-up song and by a steady tone, and measured for what its name
// and its words promise.

#include "KnobDesk.h"

#include "instruments/presets/SmartKnobLibrary.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <sstream>

namespace
{
constexpr double rate = KnobDesk::rate, pi = std::numbers::pi;
constexpr double songSeconds = 3.0, tailSeconds = 0.6, toneHz = 1000.0;

std::span<const float> part (const std::vector<float>& signal, double from, double to)
{
    return std::span (signal).subspan (static_cast<size_t> (from * rate),
                                       static_cast<size_t> ((to - from) * rate));
}

double decibels (double ratio)
{
    return 20.0 * std::log10 (std::max (ratio, 1e-9));
}

/** Drums, a bass and a chord at 120 BPM, then silence. */
const std::vector<float>& song()
{
    static const auto made = []
    {
        std::vector<float> all (static_cast<size_t> ((songSeconds + tailSeconds) * rate));
        const auto noise = Signals::noise (static_cast<int> (all.size()), 7, 1.0);
        for (size_t i = 0; i < static_cast<size_t> (songSeconds * rate); ++i)
        {
            const auto t = static_cast<double> (i) / rate;
            const auto kick = std::fmod (t, 0.5), hat = std::fmod (t + 0.25, 0.5),
                       snare = std::fmod (t + 0.5, 1.0);
            auto value = 0.5 * std::exp (-9.0 * kick)
                         * std::sin (2.0 * pi * (50.0 * kick + 8.0 * (1.0 - std::exp (-30.0 * kick))));
            value += (0.12 * std::exp (-40.0 * hat) + 0.2 * std::exp (-18.0 * snare)) * noise[i];
            for (const auto hertz : { 55.0, 220.0, 277.2, 329.6 })
                value += (hertz < 100.0 ? 0.12 : 0.05) * (2.0 * std::fmod (t * hertz, 1.0) - 1.0);
            all[i] = static_cast<float> (value);
        }
        return all;
    }();
    return made;
}

/** The level of the highs: of the difference of neighbours, in proportion to that of the signal. */
double brightness (std::span<const float> signal)
{
    std::vector<float> slopes;
    for (size_t i = 1; i < signal.size(); ++i)
        slopes.push_back (signal[i] - signal[i - 1]);
    return Signals::rms (slopes) / std::max (Signals::rms (signal), 1e-9);
}

struct Heard
{
    double level, peak, tail; ///< dB, of the song as it was
    double brightness;        ///< of the song as it was
    double difference;        ///< greatest, from the song as it was
    double depth, swing;      ///< of the tone: dB between its loud and soft, and between its sides
    double roughness;         ///< of the tone's highs as they were
};

std::vector<float> played (int id, double place, const std::vector<float>& sound,
                           std::vector<float>* right = nullptr)
{
    KnobDesk desk;
    EXPECT_EQ (SmartKnobLibrary::loadFactory (desk.knobs, 0, 0, id), "");
    desk.knobs.setSmartKnobValue (0, 0, place);
    desk.knobs.setSmartKnobOn (0, 0, true);
    auto out = desk.play ({ sound, sound });
    if (right != nullptr)
        *right = std::move (out.right);
    return std::move (out.left);
}

/** The distance between the loud and the soft end of some levels. */
double spread (std::vector<double> levels)
{
    std::sort (levels.begin(), levels.end());
    return levels[levels.size() * 95 / 100] - levels[levels.size() * 5 / 100];
}

Heard listen (int id, double place)
{
    const auto before = KnobDesk().play ({ song(), song() }).left;
    const auto after = played (id, place, song());
    Heard heard {};
    const auto reference = Signals::rms (part (before, 0.5, songSeconds));
    heard.level = decibels (Signals::rms (part (after, 0.5, songSeconds)) / reference);
    heard.tail =
        decibels (Signals::rms (part (after, songSeconds + 0.1, songSeconds + tailSeconds)) / reference);
    heard.peak = decibels (Signals::peak (after) / Signals::peak (before));
    heard.brightness =
        brightness (part (after, 0.5, songSeconds)) / brightness (part (before, 0.5, songSeconds));
    for (size_t i = static_cast<size_t> (0.1 * rate); i < after.size(); ++i)
        heard.difference = std::max (heard.difference, static_cast<double> (std::abs (after[i] - before[i])));

    const auto tone = Signals::sine (toneHz, rate, static_cast<int> (songSeconds * rate), 0.25);
    std::vector<float> right;
    const auto left = played (id, place, tone, &right);
    std::vector<double> levels, sides;
    for (auto t = 0.5; t < songSeconds - 0.011; t += 0.01)
    {
        levels.push_back (decibels (Signals::rms (part (left, t, t + 0.01))));
        sides.push_back (levels.back() - decibels (Signals::rms (part (right, t, t + 0.01))));
    }
    heard.depth = spread (levels);
    heard.swing = spread (sides);
    heard.roughness = brightness (part (left, 0.5, songSeconds)) / brightness (part (tone, 0.5, songSeconds));
    return heard;
}

struct Word
{
    const char* word;
    bool (*holds) (const Heard&);
};

constexpr Word words[] {
    { "same", [] (const Heard& h) { return h.difference < 1e-4; } },
    { "darker", [] (const Heard& h) { return h.brightness < 0.7; } },
    { "brighter", [] (const Heard& h) { return h.brightness > 1.3; } },
    { "quieter", [] (const Heard& h) { return h.level < -3.0; } },
    { "silent", [] (const Heard& h) { return h.level < -60.0; } },
    { "echoing", [] (const Heard& h) { return h.tail > -25.0; } },
    { "dry", [] (const Heard& h) { return h.tail < -60.0; } },
    { "moving", [] (const Heard& h) { return h.depth > 4.0; } },
    { "gated", [] (const Heard& h) { return h.depth > 10.0; } },
    { "panned", [] (const Heard& h) { return h.swing > 8.0; } },
    { "rough", [] (const Heard& h) { return h.roughness > 1.04; } },
};

struct Promise
{
    int id;
    const char *atRest, *halfway, *atEnd;
};

constexpr Promise promises[] {
    { 100, "same", "same", "same" },
    { 101, "same", "dry", "brighter quieter dry" },
    { 102, "same", "darker dry", "darker dry" },
    { 103, "same", "rough moving dry", "rough moving echoing" },
    { 104, "same", "same", "same" },
    { 105, "same", "brighter", "brighter quieter dry" },
    { 106, "same", "echoing moving", "echoing panned" },
    { 107, "same", "echoing", "echoing brighter" },
    { 108, "same", "echoing", "echoing" },
    { 109, "same", "darker gated dry", "darker gated dry" },
    { 110, "same", "darker", "darker echoing" },
    { 111, "same", "gated dry", "gated dry" },
    { 112, "darker dry", "same", "brighter dry" },
    { 113, "same", "silent", "same" },
    { 114, "same", "moving", "echoing" },
    { 201, "same", "brighter", "silent" },
    { 202, "silent", "brighter", "same" },
    { 203, "same", "darker", "silent" },
    { 204, "silent", "darker", "same" },
    { 205, "same", "gated echoing", "gated echoing" },
    { 206, "same", "gated rough", "gated" },
    { 207, "same", "moving echoing", "brighter gated echoing" },
    { 208, "same", "echoing panned", "brighter panned echoing" },
    { 209, "same", "panned dry", "panned dry" },
    { 210, "same", "gated echoing", "moving echoing" },
    { 211, "same", "gated echoing", "gated echoing" },
    { 212, "same", "echoing", "echoing" },
    { 213, "same", "darker moving echoing", "darker moving echoing" },
    { 214, "same", "echoing moving", "echoing moving brighter" },
    { 215, "same", "rough moving dry", "rough gated dry" },
    { 216, "same", "moving echoing", "gated echoing" },
    { 217, "same", "panned", "echoing" },
    { 218, "same", "moving dry", "gated dry" },
    { 219, "same", "gated panned", "gated panned quieter" },
    { 220, "same", "gated echoing", "gated echoing brighter" },
    { 221, "same", "echoing", "silent" },
    { 222, "same", "gated brighter", "gated brighter" },
    { 223, "same", "echoing", "echoing brighter" },
    { 224, "same", "echoing panned", "echoing panned" },
    { 225, "same", "darker echoing", "rough echoing" },
    { 226, "same", "gated", "gated panned" },
    { 227, "same", "gated", "gated brighter" },
    { 228, "same", "gated brighter", "gated brighter" },
    { 229, "same", "darker moving", "darker gated echoing" },
    { 230, "same", "darker rough", "darker rough echoing" },
    { 231, "darker dry", "same", "brighter dry" },
    { 232, "silent", "same", "silent" },
    { 233, "same", "darker", "silent" },
    { 234, "same", "brighter echoing", "silent" },
    { 301, "same", "echoing", "echoing darker" },
    { 302, "same", "gated dry", "gated brighter quieter dry" },
    { 303, "same", "rough echoing", "rough moving echoing" },
};

class PresetSound : public testing::TestWithParam<Promise>
{
};

TEST_P (PresetSound, IsWhatItsNamePromises)
{
    const auto& promise = GetParam();
    for (const auto& [place, sentence] :
         { std::pair { 0.0, promise.atRest }, { 0.5, promise.halfway }, { 1.0, promise.atEnd } })
    {
        const auto heard = listen (promise.id, place);
        EXPECT_LT (heard.level, 4.0) << place;
        EXPECT_LT (heard.peak, 6.0) << place;
        std::istringstream wanted (sentence);
        for (std::string word; wanted >> word;)
        {
            const auto* known = std::find_if (std::begin (words), std::end (words),
                                              [&word] (const Word& each) { return word == each.word; });
            ASSERT_NE (known, std::end (words)) << word;
            EXPECT_TRUE (known->holds (heard))
                << "not " << word << " at " << place << ": level " << heard.level << ", brightness "
                << heard.brightness << ", tail " << heard.tail << ", depth " << heard.depth << ", swing "
                << heard.swing << ", roughness " << heard.roughness << ", difference " << heard.difference;
        }
    }
}

INSTANTIATE_TEST_SUITE_P (Presets, PresetSound, testing::ValuesIn (promises),
                          [] (const auto& test) { return std::to_string (test.param.id); });
}

TEST (PresetSounds, NoPresetIsLeftOut)
{
    size_t count = 0;
    for (const auto& group : SmartKnobLibrary::groups())
        for (const auto& entry : group.entries)
        {
            ++count;
            const auto isEmpty = std::string_view (entry.name) == "Empty";
            EXPECT_EQ (entry.text == SmartKnobLibrary::find (104)->text, isEmpty || entry.id == 104)
                << entry.id;
            EXPECT_TRUE (isEmpty
                         || std::any_of (std::begin (promises), std::end (promises),
                                         [&entry] (const Promise& each) { return each.id == entry.id; }))
                << entry.id;
        }
    EXPECT_EQ (count, 54u);
}

TEST (PresetSounds, AfterASweepTheSoundIsTheOneBefore)
{
    for (const auto id : { 103, 214, 222, 303 })
    {
        KnobDesk desk;
        ASSERT_EQ (SmartKnobLibrary::loadFactory (desk.knobs, 0, 0, id), "");
        std::vector<float> sound;
        for (int turn = 0; turn < 3; ++turn)
            sound.insert (sound.end(), song().begin(), song().end());
        const auto before = KnobDesk().play ({ sound, sound }).left;
        const auto after = desk.play ({ sound, sound },
                                      [&] (int frame)
                                      {
                                          const auto seconds = frame / rate;
                                          desk.knobs.setSmartKnobOn (0, 0, seconds > 0.5 && seconds < 4.5);
                                          desk.knobs.setSmartKnobValue (0, 0, (seconds - 0.5) / 4.0);
                                      })
                               .left;
        auto difference = 0.0f;
        for (auto i = after.size() - static_cast<size_t> (rate); i < after.size(); ++i)
            difference = std::max (difference, std::abs (after[i] - before[i]));
        EXPECT_LT (difference, 1e-4f) << id;
    }
}

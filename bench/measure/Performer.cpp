#include "measure/Performer.h"

#include "instruments/presets/SmartKnobLibrary.h"
#include "measure/MusicLike.h"
#include "mixer/ChannelParameters.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace
{
enum Command
{
    filter = 257,
    effectParam = 314,
    effectOn = 317,
    effectSelect = 320
};
constexpr int slotsPerDeck = 3, rackStride = 9;

SmartKnobPreset allRows (bool moving)
{
    auto preset = SmartKnobPreset::empty();
    for (int row = 0; row < SmartKnobRows::count; ++row)
    {
        auto& curve = preset.rows[static_cast<size_t> (row)];
        const auto& parameter = SmartKnobRows::row (row).parameter;
        const auto rest = parameter ? static_cast<float> (ChannelParameters::row (*parameter).rest) : 0.0f;
        // Five smooth points, as a hand draws them.
        std::array<EnvelopePoint, 5> points;
        for (size_t i = 0; i < points.size(); ++i)
        {
            points[i].delta = i == 0 ? 0.0 : 1.0;
            points[i].value = moving ? 0.2f + 0.15f * static_cast<float> (i) : rest;
            points[i].tension = 0.0f;
            points[i].type = static_cast<std::uint8_t> (SegmentShape::smooth);
        }
        curve.envelope.setPoints (points);
        curve.enabled = true;
    }
    return preset;
}
}

namespace Performer
{
void turnEffectsOn (BenchEngine& engine, int deck)
{
    engine->setParameter (filter + deck, 0.3f);
    static constexpr std::array kinds { FxType::lowPass, FxType::distortion, FxType::reverb };
    static_assert (kinds.size() == slotsPerDeck);
    for (int slot = 0; slot < slotsPerDeck; ++slot)
    {
        const auto member = slot + rackStride * deck;
        const auto kind = kinds[static_cast<size_t> (slot)];
        engine->setParameter (effectSelect + member, static_cast<float> (FxType::selectorValue (kind)));
        engine->setParameter (effectParam + member, 0.4f);
        engine->setParameter (effectOn + member, 1.0f);
    }
}

void holdKnobs (BenchEngine& engine, bool moving)
{
    for (int deck = 0; deck < deckCount; ++deck)
        for (int knob = 0; knob < SmartKnobs::knobsPerDeck; ++knob)
        {
            engine->smartKnobs.loadSmartKnobPreset (deck, knob, allRows (moving));
            engine->smartKnobs.setSmartKnobOn (deck, knob, true);
        }
}

void turnKnobs (BenchEngine& engine, int block)
{
    for (int deck = 0; deck < deckCount; ++deck)
        for (int knob = 0; knob < SmartKnobs::knobsPerDeck; ++knob)
            engine->smartKnobs.setSmartKnobValue (deck, knob,
                                                  0.5 + 0.5 * std::sin (0.01 * block + deck + knob));
}

void runPad (BenchEngine& engine, int deck, int preset)
{
    auto& pads = engine->slicegates[static_cast<size_t> (deck)];
    pads.loadFactoryPreset (preset, 0);
    pads.setPlayMode (0, PlayMode::loop);
    pads.trigger (0);
}

void fillSampler (Sampler& sampler, double rate, int pads)
{
    const auto music = MusicLike::make (2.0, rate);
    for (int pad = 0; pad < pads; ++pad)
    {
        auto& slot = *sampler.desk.find (pad);
        std::copy_n (music.getReadPointer (0), music.getNumSamples(), slot.buffer.left());
        std::copy_n (music.getReadPointer (1), music.getNumSamples(), slot.buffer.right());
        SampleFacts facts;
        facts.lengthFrames = music.getNumSamples();
        facts.beats = 8.0;
        auto stretcher = sampler.desk.makeStretcher();
        sampler.desk.publish (slot, facts, stretcher);
        sampler.setPlayMode (pad, loopMode);
    }
}
}

SteadyRecord::SteadyRecord (const ControlMedium& medium, double rate, int frames, double speed)
{
    const auto code = codeOf (medium);
    for (int i = 0; i < frames; ++i)
    {
        const auto cycles = i * speed * medium.carrierHz / rate;
        const auto angle = 2 * std::numbers::pi * cycles;
        const auto bits = code->bitsAt (static_cast<std::int64_t> (cycles));
        const auto slot = static_cast<int> ((cycles - std::floor (cycles)) * 6);
        const auto height = medium.isOwnDisc() || bits != 0 ? 0.5 : 0.5 - (1 - std::cos (angle)) / 8;
        const auto burst = medium.isOwnDisc() && (bits >> slot & 1u) != 0 ? 0.25 * std::sin (3 * angle) : 0.0;
        const auto primary = static_cast<float> (height * std::sin (angle) + burst),
                   secondary = static_cast<float> ((medium.isOwnDisc() ? -0.25 : -height) * std::cos (angle));
        left.push_back (medium.primaryIsLeft ? primary : secondary);
        right.push_back (medium.primaryIsLeft ? secondary : primary);
    }
}

#pragma once

#include "fx/effect/FxEffect.h"
#include "support/CrossFade.h"
#include "support/Relaxed.h"

#include <array>
#include <memory>

/** The kinds of effect in the order of the selector. */
namespace FxType
{
enum Index
{
    delay,
    flanger,
    phaser,
    lowPass,
    highPass,
    autoPan,
    trans,
    bitCrusher,
    distortion,
    reverb
};
inline constexpr int count = reverb + 1;

/** The name of a kind, 0 to 9. */
const char* name (int index) noexcept;

/** The selector's value in the middle of a kind's step. */
double selectorValue (int index) noexcept;
}

/** One slot of a rack: an instance of every kind of effect, and a selector that says which is heard.

    Dry/wet, frequency and bypass belong to the slot and reach all its effects; feedback, step and sign belong to the effect
    that is selected when they come. Setters run under the callback lock or on the audio thread; readers on any thread. */
class EffectSlot
{
public:
    /** @param initial   the selected kind, 0 to 9 */
    explicit EffectSlot (int initial);

    PX_AUDIO_THREAD void setSampleRate (double rate) noexcept;

    /** @param value   limited to 0 to 1 */
    PX_AUDIO_THREAD void setFxParameter (FxParameter, double value) noexcept;

    /** From the next block on, by a cross-fade of 5 ms. @param value   0 to 1, in ten steps */
    PX_AUDIO_THREAD void selectFx (double value) noexcept;

    /** The step of one kind of effect, selected or not. @param effect   0 to 9, the caller limits it */
    PX_AUDIO_THREAD void setStep (int effect, double value) noexcept;
    double step (int effect) const noexcept { return knobs[static_cast<size_t> (effect)].step; }

    double parameter (FxParameter) const noexcept;
    double selector() const noexcept { return selectorValue; }
    int selected() const noexcept { return wanted; }
    bool isOn() const noexcept { return bypass < 0.5; }

    /** Empty for what the selected effect does not know. Not on the audio thread. */
    std::string parameterText (FxParameter) const;

    PX_AUDIO_THREAD void process (float* left, float* right, int frames, double bpm) noexcept;

private:
    /** The knobs of one kind of effect. */
    struct Knobs
    {
        Relaxed<double> feedback { 0.0 }, step { 0.0 }, sign { 1.0 };
    };

    Relaxed<double>& knob (FxParameter) noexcept;
    FxEffect& effect (int index) noexcept { return *effects[static_cast<size_t> (index)]; }
    static constexpr int longestPiece = 64; ///< of a cross-fade

    void crossfade (float* left, float* right, int frames, double bpm) noexcept;

    std::array<std::unique_ptr<FxEffect>, FxType::count> effects;
    std::array<Knobs, FxType::count> knobs;
    Relaxed<double> dryWet { 0.5 }, frequency { 0.5 }, bypass { 1.0 };
    Relaxed<double> selectorValue;
    Relaxed<int> wanted;
    int current, former;
    GainRamp arrival { 1.0 }; ///< of the current effect, over the former
    GainRamp intake { 1.0 };  ///< of the sound, into the current effect
    int quietFrames = 0,
        quietAfter = 1; ///< since the slot was switched off; so many, and nothing of it is heard
};

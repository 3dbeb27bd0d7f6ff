#pragma once

#include "support/GainRamp.h"

/** Dry, wet and bypass of a delay, flanger or phaser: `dry * bypass + (wet + dryPart) * (1 - bypass)`, each factor on a
    ramp of 5 ms. The default is half wet and bypassed. */
class EffectMix
{
public:
    /** Factors of the next frame: of the input and of the effect's own sound. */
    struct Gains
    {
        float dry, wet;
    };

    /** In Hz, above 0. */
    PX_AUDIO_THREAD void setSampleRate (double rate) noexcept
    {
        for (auto* ramp : { &dry, &wet, &bypass })
            ramp->setSampleRate (rate);
    }

    /** Both ways at once: wet to `value`, dry to the rest. @param value   0 to 1 */
    PX_AUDIO_THREAD void setDryWet (double value) noexcept
    {
        wet.setTarget (value);
        dry.setTarget (1.0 - value);
    }

    PX_AUDIO_THREAD void setBypass (bool isOn) noexcept { bypass.setTarget (isOn ? 1.0 : 0.0); }

    /** Once per frame. While nothing moves the gains are those of the last call. */
    PX_AUDIO_THREAD Gains next() noexcept
    {
        const auto off = bypass.next();
        const auto dryGain = dry.next(), wetGain = wet.next();
        return { static_cast<float> (off + dryGain * (1.0 - off)),
                 static_cast<float> (wetGain * (1.0 - off)) };
    }

    PX_AUDIO_THREAD bool isMoving() const noexcept
    {
        return bypass.isMoving() || dry.isMoving() || wet.isMoving();
    }

    /** True once only the input is heard. */
    PX_AUDIO_THREAD bool isBypassed() const noexcept { return bypass.isAt (1.0); }

    PX_AUDIO_THREAD void settle() noexcept
    {
        bypass.settle();
        dry.settle();
        wet.settle();
    }

private:
    GainRamp dry { 0.5 }, wet { 0.5 }, bypass { 1.0 };
};

#pragma once

#include "ui/look/SkinPicture.h"
#include "ui/widgets/PXSlider.h"

/** A fader: a background and a thumb whose travel is the slider's length less its own. */
class PXImageLinearSlider : public PXSlider
{
public:
    /** @param style   LinearVertical, whose maximum is above, or LinearHorizontal */
    explicit PXImageLinearSlider (const juce::String& name = {}, SliderStyle style = LinearVertical);

    enum class Track
    {
        asItIs,   ///< the background stands in the middle, and the thumb travels along it
        stretched ///< the background's middle is repeated to the slider's length
    };

    /** @param background   may be empty: then the thumb travels along the whole slider
        @param thumb        of up to three frames: as it is, under the mouse, while it is moved */
    void setImages (const SkinPicture& background, const SkinPicture& thumb, Track = Track::asItIs);

    juce::Rectangle<int> thumbBounds() const;

    void paint (juce::Graphics&) override;

protected:
    double proportionOf (juce::Point<float> moved) const override;
    double proportionAt (juce::Point<float>) const override;

private:
    juce::Rectangle<int> trackBounds() const;

    Track trackKind = Track::asItIs;
    SkinPicture background, thumb;
};

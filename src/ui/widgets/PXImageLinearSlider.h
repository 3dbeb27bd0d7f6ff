#pragma once

#include "ui/widgets/PXSlider.h"
#include "ui/widgets/SkinPicture.h"

/** A fader: a background and a thumb whose travel is the slider's length less its own. */
class PXImageLinearSlider : public PXSlider
{
public:
    /** @param style   LinearVertical, whose maximum is above, or LinearHorizontal */
    explicit PXImageLinearSlider (const juce::String& name = {}, SliderStyle style = LinearVertical);

    /** @param background   may be empty; stands in the middle
        @param thumb        of up to three frames: as it is, under the mouse, while it is moved */
    void setImages (const SkinPicture& background, const SkinPicture& thumb);

    /** The same by the names of strips. */
    void setStrips (const char* background, const char* thumb);

    juce::Rectangle<int> thumbBounds() const;

    void paint (juce::Graphics&) override;

protected:
    int travel() const override;

private:
    SkinPicture background, thumb;
};

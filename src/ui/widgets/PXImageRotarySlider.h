#pragma once

#include "ui/widgets/PXSlider.h"
#include "ui/widgets/SkinPicture.h"

/** A knob: one picture out of a film strip for each of its positions. */
class PXImageRotarySlider : public PXSlider
{
public:
    explicit PXImageRotarySlider (const juce::String& name = {});

    /** @param frameHeight   of each of the frames, from the minimum's above to the maximum's below */
    void setFilmStrip (juce::Image, int frames, int frameHeight);

    /** The same by the names of strips of equal size.
        @param changing   shown while the value is being changed; null for none */
    void setFilmStrip (const char* strip, const char* changing = nullptr);

    /** The frame of a position. @param proportion   0 to 1, is limited to that */
    static int frameOf (double proportion, int frames) noexcept;

    int shownFrame() const { return frameOf (proportion(), film.frames()); }

    static constexpr int dragTravel = 150; ///< pixels of a drag, upwards or to the right, for the whole range

    void paint (juce::Graphics&) override;

protected:
    int travel() const override { return dragTravel; }

    /** Where the knob itself stands. */
    virtual juce::Rectangle<int> knobBounds() const;

private:
    SkinPicture film, changing;
};

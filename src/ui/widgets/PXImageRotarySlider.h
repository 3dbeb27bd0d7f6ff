#pragma once

#include "ui/look/SkinPicture.h"
#include "ui/widgets/PXSlider.h"

/** A knob: one picture out of a film strip for each of its positions. */
class PXImageRotarySlider : public PXSlider
{
public:
    explicit PXImageRotarySlider (const juce::String& name = {});

    /** @param frameHeight   of each of the frames, from the minimum's above to the maximum's below */
    void setFilmStrip (juce::Image, int frames, int frameHeight);

    /** The same from the skin. @param changing   of equal size, shown while the value is being changed; may be empty */
    void setFilmStrip (const SkinPicture&, const SkinPicture& changing = {});

    /** A knob of the skin: 28 or 40 pixels, grown from its minimum or its middle, in a deck's hue or none. */
    void setKnob (int size, bool centred, int deck = -1);

    int shownFrame() const;

    static constexpr int dragTravel = 150; ///< pixels of a drag, upwards or to the right, for the whole range

    void paint (juce::Graphics&) override;

protected:
    double proportionOf (juce::Point<float> moved) const override;

    /** The place of the knob itself. */
    virtual juce::Rectangle<int> knobBounds() const;

    int knobHeight() const noexcept { return film.height(); }

private:
    SkinPicture film, changing;
};

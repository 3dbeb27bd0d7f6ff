#include "ui/widgets/PXImageRotarySlider.h"

#include "skin/Palette.h"
#include "ui/look/ButtonSkin.h"

PXImageRotarySlider::PXImageRotarySlider (const juce::String& name)
    : PXSlider (name, RotaryHorizontalVerticalDrag)
{
}

void PXImageRotarySlider::setFilmStrip (juce::Image image, int frames, int frameHeight)
{
    film = { image.getClippedImage ({ image.getWidth(), frames * frameHeight }), frames };
    changing = {};
    repaint();
}

void PXImageRotarySlider::setFilmStrip (const SkinPicture& strip, const SkinPicture& whileChanging)
{
    film = strip;
    changing = whileChanging;
    repaint();
}

void PXImageRotarySlider::setKnob (int size, bool centred, int deck)
{
    const auto family = "knob_" + std::to_string (size) + (centred ? "_centred" : "");
    setFilmStrip (deck < 0 ? family : skin::deckName (family, deck), family + "_accent");
}

double PXImageRotarySlider::proportionOf (juce::Point<float> moved) const
{
    return static_cast<double> (moved.x - moved.y) / dragTravel;
}

juce::Rectangle<int> PXImageRotarySlider::knobBounds() const
{
    return getLocalBounds();
}

void PXImageRotarySlider::paint (juce::Graphics& g)
{
    const auto& strip = isBeingChanged() && !changing.isEmpty() ? changing : film;
    strip.draw (g, knobBounds(), shownFrame(), isEnabled() ? 1.0f : palette::disabledSign);
}

int PXImageRotarySlider::shownFrame() const
{
    return knobFrame (proportion(), film.frames());
}

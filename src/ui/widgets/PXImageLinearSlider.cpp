#include "ui/widgets/PXImageLinearSlider.h"

#include "skin/Palette.h"

PXImageLinearSlider::PXImageLinearSlider (const juce::String& name, SliderStyle style)
    : PXSlider (name, style)
{
    jassert (style == LinearVertical || style == LinearHorizontal);
}

void PXImageLinearSlider::setImages (const SkinPicture& newBackground, const SkinPicture& newThumb,
                                     Track kind)
{
    background = newBackground;
    thumb = newThumb;
    trackKind = kind;
    repaint();
}

juce::Rectangle<int> PXImageLinearSlider::trackBounds() const
{
    if (trackKind == Track::stretched || background.isEmpty())
        return getLocalBounds();
    return juce::Rectangle<int> (background.width(), background.height())
        .withCentre (getLocalBounds().getCentre());
}

juce::Rectangle<int> PXImageLinearSlider::thumbBounds() const
{
    const auto track = trackBounds();
    const juce::Rectangle<int> cap (thumb.width(), thumb.height());
    if (isVertical())
    {
        const auto travel = juce::jmax (0, track.getHeight() - cap.getHeight());
        const auto y = juce::roundToInt ((1.0 - proportion()) * travel);
        return cap.withPosition (track.getCentreX() - cap.getWidth() / 2, track.getY() + y);
    }
    const auto travel = juce::jmax (0, track.getWidth() - cap.getWidth());
    const auto x = juce::roundToInt (proportion() * travel);
    return cap.withPosition (track.getX() + x, track.getCentreY() - cap.getHeight() / 2);
}

double PXImageLinearSlider::proportionOf (juce::Point<float> moved) const
{
    const auto track = trackBounds();
    if (isVertical())
        return static_cast<double> (-moved.y) / juce::jmax (1, track.getHeight() - thumb.height());
    return static_cast<double> (moved.x) / juce::jmax (1, track.getWidth() - thumb.width());
}

double PXImageLinearSlider::proportionAt (juce::Point<float> place) const
{
    return proportion() + proportionOf (place - thumbBounds().toFloat().getCentre());
}

void PXImageLinearSlider::paint (juce::Graphics& g)
{
    const auto alpha = isEnabled() ? 1.0f : palette::disabledSign;
    if (trackKind == Track::asItIs)
        background.draw (g, getLocalBounds(), 0, alpha);
    else if (isVertical())
        background.drawTall (g, getLocalBounds(), 0, alpha);
    else
        background.drawWide (g, getLocalBounds(), 0, alpha);
    thumb.draw (g, thumbBounds(), handState(), alpha);
}

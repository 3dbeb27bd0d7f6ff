#include "ui/look/SkinPicture.h"

#include <algorithm>

namespace
{
bool isKnown (std::string_view name)
{
    return std::any_of (skin::table.begin(), skin::table.end(),
                        [name] (const auto& row) { return row.name() == name; });
}
}

SkinPicture::SkinPicture (std::string_view stripName, int firstFrame) : name (stripName)
{
    jassert (isKnown (stripName));
    if (!isKnown (stripName))
        return;
    strip = skin::strip (name, 1.0f);
    first = juce::jlimit (0, strip.frames - 1, firstFrame);
}

SkinPicture::SkinPicture (juce::Image image, int frames)
{
    if (!image.isValid() || frames < 1)
        return;
    strip = { image, frames, image.getWidth(), image.getHeight() / frames, 1.0f };
}

const skin::Strip& SkinPicture::at (juce::Graphics& g) const
{
    if (name.empty())
        return strip;
    if (const auto scale = skin::scaleOf (g); scale != latestScale)
    {
        latest = skin::strip (name, scale);
        latestScale = scale;
    }
    return latest;
}

int SkinPicture::frameIn (int frame) const noexcept
{
    return juce::jlimit (first, std::max (first, strip.frames - 1), first + frame);
}

void SkinPicture::draw (juce::Graphics& g, juce::Rectangle<int> target, int frame, float alpha) const
{
    if (!isEmpty())
        at (g).draw (g, target, frameIn (frame), alpha);
}

void SkinPicture::drawPart (juce::Graphics& g, juce::Point<int> place, juce::Rectangle<int> part, int frame,
                            float alpha) const
{
    if (!isEmpty())
        at (g).drawPart (g, place, part, frameIn (frame), alpha);
}

void SkinPicture::drawWide (juce::Graphics& g, juce::Rectangle<int> target, int frame, float alpha) const
{
    if (isEmpty())
        return;
    if (target.getWidth() == width())
        draw (g, target, frame, alpha);
    else
        at (g).drawWide (g, target, frameIn (frame), endLength, alpha);
}

void SkinPicture::drawTall (juce::Graphics& g, juce::Rectangle<int> target, int frame, float alpha) const
{
    if (isEmpty())
        return;
    if (target.getHeight() == height())
        draw (g, target, frame, alpha);
    else
        at (g).drawTall (g, target, frameIn (frame), endLength, alpha);
}

bool SkinPicture::isClearAt (juce::Point<int> place, int frame) const
{
    if (isEmpty() || !juce::Rectangle<int> (width(), height()).contains (place))
        return true;
    return strip.image.getPixelAt (place.x, place.y + frameIn (frame) * height()).getAlpha() == 0;
}

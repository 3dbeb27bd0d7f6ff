#include "ui/widgets/PXImageLevelMeter.h"

#include <algorithm>
#include <cmath>

PXImageLevelMeter::PXImageLevelMeter (bool isUpright) : PollingView (Pace::moving), upright (isUpright)
{
    setInterceptsMouseClicks (false, false);
    setImages (isUpright ? "meter_upright" : "meter_level");
}

PXImageHorizontalLevelMeter::PXImageHorizontalLevelMeter() : PXImageLevelMeter (false) {}

PXImageVerticalLevelMeter::PXImageVerticalLevelMeter() : PXImageLevelMeter (true) {}

int PXImageLevelMeter::litLength (float level) noexcept
{
    if (!(level > 0.0f))
        return 0;
    const auto root = std::exp (std::log (static_cast<double> (std::min (level, 1.0f))) / 3.0);
    return std::clamp (static_cast<int> (length * root + 0.5), 0, length);
}

void PXImageLevelMeter::setImages (const SkinPicture& both)
{
    unlit = lit = both;
    litFrame = 1;
    repaint();
}

void PXImageLevelMeter::setImages (const SkinPicture& newUnlit, const SkinPicture& newLit)
{
    unlit = newUnlit;
    lit = newLit;
    litFrame = 0;
    repaint();
}

void PXImageLevelMeter::bind (CPlatterdex& engine, int left, int right)
{
    levels = { CommandBinding (engine, left), CommandBinding (engine, right) };
    pollMoving();
}

void PXImageLevelMeter::pollMoving()
{
    if (levels[0].isBound())
        setLevels (static_cast<float> (levels[0].value()), static_cast<float> (levels[1].value()));
}

void PXImageLevelMeter::setLevels (float left, float right)
{
    const std::array next { litLength (left), litLength (right) };
    for (size_t bar = 0; bar < shown.size(); ++bar)
    {
        if (next[bar] == shown[bar])
            continue;
        repaint (span (bar, std::min (next[bar], shown[bar]), std::max (next[bar], shown[bar]))
                 + pictureOrigin());
        shown[bar] = next[bar];
    }
}

juce::Point<int> PXImageLevelMeter::pictureOrigin() const
{
    return juce::Rectangle<int> (unlit.width(), unlit.height())
        .withCentre (getLocalBounds().getCentre())
        .getPosition();
}

juce::Rectangle<int> PXImageLevelMeter::span (size_t bar, int from, int to) const
{
    const auto across = static_cast<int> (bar) * secondBar;
    if (upright)
        return { across, length - to, barThickness, to - from };
    return { from, across, to - from, barThickness };
}

void PXImageLevelMeter::paint (juce::Graphics& g)
{
    const auto origin = pictureOrigin();
    unlit.drawPart (g, origin, { unlit.width(), unlit.height() });
    for (size_t bar = 0; bar < shown.size(); ++bar)
    {
        const auto part = span (bar, 0, shown[bar]);
        lit.drawPart (g, origin + part.getPosition(), part, litFrame);
    }
}

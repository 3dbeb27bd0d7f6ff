#include "ui/global/PeakMeter.h"

#include "engine/CPlatterdex.h"
#include "skin/Palette.h"

#include <cmath>

namespace
{
constexpr int barWidth = 7, secondBar = 9;
constexpr int segment = 4; ///< of the bars; its last pixel is a gap
}

PeakMeter::PeakMeter (CPlatterdex& e, int d) : PollingView (Pace::moving), engine (e), deck (d)
{
    setInterceptsMouseClicks (false, false);
}

juce::Rectangle<int> PeakMeter::bar (int side) const
{
    return getLocalBounds()
        .withTrimmedTop (lampHeight + lampGap)
        .withWidth (barWidth)
        .translated (side * secondBar, 0);
}

void PeakMeter::pollMoving()
{
    const auto& meters = engine.channels[static_cast<size_t> (deck)].meters;
    Shown next;
    for (size_t side = 0; side < next.lengths.size(); ++side)
    {
        const auto level = meters.level (static_cast<int> (side));
        next.lengths[side] = juce::roundToInt (std::cbrt (level) * static_cast<float> (bar (0).getHeight()));
        next.clipped[side] = meters.hasClipped (static_cast<int> (side));
    }
    if (next == shown)
        return;
    for (int side = 0; side < 2; ++side)
    {
        const auto at = static_cast<size_t> (side);
        const auto area = bar (side);
        const auto [least, most] = std::minmax (next.lengths[at], shown.lengths[at]);
        // A segment is lit as a whole.
        if (least != most)
            repaint (area.withTop (std::max (area.getY(), area.getBottom() - most - segment))
                         .withBottom (area.getBottom() - std::max (0, least - segment)));
        if (next.clipped[at] != shown.clipped[at])
            repaint (area.withY (0).withHeight (lampHeight));
    }
    shown = next;
}

void PeakMeter::paint (juce::Graphics& g)
{
    const auto hue = palette::decks[static_cast<size_t> (deck)];
    for (int side = 0; side < 2; ++side)
    {
        const auto at = static_cast<size_t> (side);
        const auto area = bar (side);
        g.setColour (shown.clipped[at] ? palette::danger : palette::well);
        g.fillRect (area.withY (0).withHeight (lampHeight));
        for (int below = 0; below + segment <= area.getHeight(); below += segment)
        {
            g.setColour (below + segment / 2 <= shown.lengths[at] ? hue : palette::well);
            g.fillRect (area.getX(), area.getBottom() - below - segment + 1, barWidth, segment - 1);
        }
    }
}

#include "ui/LevelMeter.h"

#include "engine/CPlatterdex.h"
#include "ui/Look.h"

namespace
{
constexpr float lowestDb = -60.0f;
constexpr int gap = 2;
}

LevelMeter::LevelMeter (CPlatterdex& e, std::vector<int> n, juce::Colour c)
    : engine (e),
      numbers (std::move (n)),
      colour (c),
      shown (numbers.size())
{
    setInterceptsMouseClicks (false, false);
}

void LevelMeter::poll()
{
    const auto full = juce::jmax (getWidth(), getHeight());
    std::vector<int> next;
    for (const auto number : numbers)
    {
        const auto db = juce::Decibels::gainToDecibels (engine.getParameter (number), lowestDb);
        next.push_back (juce::roundToInt (static_cast<float> (full) * (1.0f - db / lowestDb)));
    }
    if (next == shown)
        return;
    shown = std::move (next);
    repaint();
}

void LevelMeter::paint (juce::Graphics& g)
{
    const auto upright = getHeight() > getWidth();
    const auto full = juce::jmax (getWidth(), getHeight()), count = static_cast<int> (shown.size());
    auto area = getLocalBounds();
    const auto thickness = ((upright ? area.getWidth() : area.getHeight()) - gap * (count - 1)) / count;
    for (const auto length : shown)
    {
        auto bar = upright ? area.removeFromLeft (thickness) : area.removeFromTop (thickness);
        upright ? area.removeFromLeft (gap) : area.removeFromTop (gap);
        g.setColour (Look::well);
        g.fillRect (bar);
        g.setColour (length >= full ? Look::danger : colour);
        g.fillRect (upright ? bar.removeFromBottom (length) : bar.removeFromLeft (length));
    }
}

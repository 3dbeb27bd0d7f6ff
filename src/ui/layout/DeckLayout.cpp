#include "ui/layout/DeckLayout.h"

#include <algorithm>

namespace
{
constexpr int margin = 4, gap = 3, textMargin = 8;
constexpr int lineHeight = 16, tempoWidth = 112, gridSignWidth = 64;
constexpr int headHeight = 44, timeTop = 12, timeHeight = 28,
              timeHalfWidth = 68; // the time stands in the middle
}

DeckLayout::DeckLayout (int width, int height, int left, int right)
{
    left = std::clamp (left, 0, mostPanels);
    right = std::clamp (right, 0, mostPanels);
    const auto room = std::max (0, (width - transportWidth - leastWaveform) / panelWidth);
    while (left + right > room)
        (left >= right ? left : right)--;

    juce::Rectangle<int> area (width, height);
    auto upper = area.removeFromTop (upperHeight);
    thumbnail = area.reduced (margin, 0).withTrimmedTop (gap).withTrimmedBottom (margin);
    transport = upper.removeFromLeft (transportWidth);
    for (int i = 0; i < left; ++i)
        leftPanels.push_back (upper.removeFromLeft (panelWidth));
    for (int i = 0; i < right; ++i)
        rightPanels.push_back (upper.removeFromRight (panelWidth));
    waveform = upper;

    if (waveform.getWidth() < wideWaveform)
    {
        title = thumbnail.removeFromTop (lineHeight).withTrimmedLeft (margin);
        tempo = title.removeFromRight (tempoWidth);
        gridSign = title.withTrimmedLeft (title.getWidth() - gridSignWidth);
        return;
    }
    auto before = waveform.withHeight (headHeight).reduced (textMargin, 0);
    auto after = before.removeFromRight (before.getWidth() / 2);
    before.removeFromRight (timeHalfWidth);
    after.removeFromLeft (timeHalfWidth);
    tempo = after.withTrimmedTop (timeTop).withHeight (timeHeight);
    gridSign = after.withTrimmedLeft (after.getWidth() - gridSignWidth).withHeight (lineHeight);
    title = before.withTrimmedTop (4).removeFromTop (20);
    artist = before.withTrimmedTop (24).removeFromTop (16);
}

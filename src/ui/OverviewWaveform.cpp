#include "ui/OverviewWaveform.h"

#include "engine/CPlatterdex.h"
#include "ui/Look.h"

#include <algorithm>

namespace
{
constexpr int flagStripHeight = 13, flagWidth = 12;
constexpr int playheadWidth = 2, playheadReach = 2;
constexpr float fullScale = 32.0f; ///< of the overview's 6 bits with sign

/** The bands as a colour that stands out from the ground however quiet they are. */
juce::Colour colourOfBands (int low, int mid, int high)
{
    const auto loudest = std::max ({ low, mid, high, 1 });
    const auto channel = [loudest] (int band)
    { return static_cast<juce::uint8> (90 + 140 * band / loudest); };
    return { channel (low), channel (mid), channel (high) };
}
}

OverviewWaveform::OverviewWaveform (CPlatterdex& e, int deck)
    : PollingView (Pace::moving),
      engine (e),
      deckIndex (deck),
      commands (deck)
{
    setOpaque (true);
}

OverviewWaveform::Layout OverviewWaveform::layout() const
{
    auto area = getLocalBounds().reduced (0, 2);
    const auto flagStrip = area.removeFromTop (flagStripHeight);
    return { flagStrip, area };
}

void OverviewWaveform::setNotice (const juce::StringArray& lines, bool quiet)
{
    if (lines == shownNotice && quiet == quietNotice)
        return;
    shownNotice = lines;
    quietNotice = quiet;
    repaint();
}

void OverviewWaveform::mouseDown (const juce::MouseEvent& event)
{
    if (event.mods.isLeftButtonDown() && getWidth() > 0)
        engine.setParameter (commands.seek, juce::jlimit (0.0f, 1.0f, event.position.x / getWidth()));
}

int OverviewWaveform::xOf (double frame) const
{
    const auto frames = static_cast<double> (engine.decks.deck (deckIndex)->loadedFrames);
    return frames > 0.0
               ? juce::roundToInt (juce::jlimit (0.0, 1.0, frame / frames) * std::max (0, getWidth() - 1))
               : -1;
}

void OverviewWaveform::pollMoving()
{
    const auto next = xOf (engine.decks.deck (deckIndex)->heardPosition());
    if (next == playheadX)
        return;
    const auto [from, to] = std::minmax (next, playheadX);
    playheadX = next;
    repaint (from - playheadReach, 0, to - from + 2 * playheadReach + 1, getHeight());
}

void OverviewWaveform::pollCalm()
{
    auto nextColumns = readColumns();
    auto nextFlags = readFlags();
    if (nextColumns == columns && nextFlags == flags)
        return;
    columns = std::move (nextColumns);
    flags = std::move (nextFlags);
    repaint();
}

std::vector<OverviewWaveform::Column> OverviewWaveform::readColumns() const
{
    const auto& deck = *engine.decks.deck (deckIndex);
    const auto& overview = *deck.overview;
    const auto entries = std::min (TrackOverview::entries,
                                   (deck.loadedFrames + framesPerOverviewEntry - 1) / framesPerOverviewEntry);
    const auto width = getWidth();
    if (entries < 1 || width < 1)
        return {};

    std::vector<Column> result (static_cast<size_t> (width));
    for (int x = 0; x < width; ++x)
    {
        const auto at = [&] (int column)
        { return static_cast<size_t> (static_cast<int64_t> (column) * entries / width); };
        const auto first = at (x);
        const auto end = std::max (at (x + 1), first + 1);
        int top = 0, bottom = 0, body = 0, low = 0, mid = 0, high = 0;
        for (auto entry = first; entry < end; ++entry)
        {
            top = std::max<int> (top, overview.overviewMax[entry]);
            bottom = std::min<int> (bottom, overview.overviewMin[entry]);
            body = std::max<int> (body, overview.overviewLevel[entry]);
            low += overview.overviewLow[entry];
            mid += overview.overviewMid[entry];
            high += overview.overviewHigh[entry];
        }
        result[static_cast<size_t> (x)] = { static_cast<float> (top) / fullScale,
                                            static_cast<float> (bottom) / fullScale,
                                            static_cast<float> (body) / fullScale,
                                            colourOfBands (low, mid, high) };
    }
    return result;
}

std::vector<OverviewWaveform::Flag> OverviewWaveform::readFlags() const
{
    const auto& deck = *engine.decks.deck (deckIndex);
    std::vector<Flag> result;
    if (deck.loadedFrames > 0)
        for (int slot = 0; slot < hotCueCount; ++slot)
            if (const double cue = deck.cues[static_cast<size_t> (slot)]; cue > emptyCue)
                result.push_back ({ xOf (cue), slot + 1 });
    return result;
}

void OverviewWaveform::paint (juce::Graphics& g)
{
    g.fillAll (Look::ground);
    const auto areas = layout();
    paintColumns (g, areas.picture);
    if (playheadX >= 0)
    {
        g.setColour (Look::ground.withAlpha (0.5f));
        g.fillRect (areas.picture.withRight (playheadX));
    }
    paintFlags (g, areas);
    if (playheadX >= 0)
    {
        g.setColour (Look::deckHue (deckIndex));
        g.fillRect (juce::Rectangle<int> (playheadX, 0, playheadWidth, getHeight())
                        .constrainedWithin (getLocalBounds()));
    }
    paintNotice (g);
}

void OverviewWaveform::paintColumns (juce::Graphics& g, juce::Rectangle<int> picture) const
{
    const auto visible = g.getClipBounds();
    const auto middle = static_cast<float> (picture.getCentreY());
    const auto half = static_cast<float> (picture.getHeight()) * 0.5f;
    const auto end = std::min (visible.getRight(), static_cast<int> (columns.size()));
    for (int x = std::max (0, visible.getX()); x < end; ++x)
    {
        const auto& column = columns[static_cast<size_t> (x)];
        const auto left = static_cast<float> (x);
        g.setColour (column.colour.withMultipliedBrightness (0.5f));
        g.fillRect (left, middle - column.top * half, 1.0f, (column.top - column.bottom) * half);
        g.setColour (column.colour);
        g.fillRect (left, middle - column.body * half, 1.0f, 2.0f * column.body * half);
    }
}

void OverviewWaveform::paintFlags (juce::Graphics& g, const Layout& areas) const
{
    g.setFont (Look::font (Look::labelSize));
    for (const auto& flag : flags)
    {
        // The cloth hangs before the attack that the pole marks, as long as there is room.
        auto cloth = areas.flags.withX (flag.x - flagWidth).withWidth (flagWidth);
        if (cloth.getX() < 0)
            cloth.setX (flag.x);
        g.setColour (Look::deckHue (deckIndex));
        g.fillRect (flag.x, 0, 1, getHeight());
        g.fillRect (cloth);
        g.setColour (Look::dark);
        g.drawText (juce::String (flag.number), cloth, juce::Justification::centred, false);
    }
}

void OverviewWaveform::paintNotice (juce::Graphics& g) const
{
    if (shownNotice.isEmpty())
        return;
    constexpr int lineHeight = 18, widest = 320;
    auto lines = shownNotice;
    if (lineHeight * lines.size() > getHeight()) // in a low window one line is all there is
        lines = juce::StringArray (lines.joinIntoString (" "));
    auto box = getLocalBounds().withSizeKeepingCentre (std::min (getWidth(), widest),
                                                       std::min (getHeight(), lineHeight * lines.size() + 4));
    g.setColour (Look::panel.withAlpha (0.92f));
    g.fillRect (box);
    g.setColour (quietNotice ? Look::label : Look::value);
    g.setFont (Look::font (Look::valueSize));
    box.reduce (0, 2);
    const auto step = box.getHeight() / lines.size();
    for (const auto& line : lines)
        g.drawFittedText (line, box.removeFromTop (step), juce::Justification::centred, 1);
}

#include "ui/deckviews/DeckWaveformThumbnail.h"

#include "engine/CPlatterdex.h"
#include "skin/Palette.h"
#include "ui/deckviews/ThumbnailColumns.h"
#include "ui/look/SMLookAndFeel.h"

namespace
{
constexpr int fullScale = 32; ///< of the waveform data, 6 bits with sign
constexpr float playedAlpha = 0.5f, loopAlpha = 0.35f;
constexpr int playheadWidth = 2, flagSize = 5;
constexpr int minuteTick = 4, minuteTextHeight = 11;
constexpr float chipAlpha = 0.75f;
constexpr float leastMinuteWidth = 24.0f; ///< below it the minutes are ticks without numbers
}

DeckWaveformThumbnail::DeckWaveformThumbnail (CPlatterdex& e, int deck)
    : PollingView (Pace::moving),
      engine (e),
      watch (e, deck)
{
    setOpaque (true);
    setRepaintsOnMouseActivity (false);
    engine.listeners.add (*this);
}

DeckWaveformThumbnail::~DeckWaveformThumbnail()
{
    engine.listeners.remove (*this);
}

void DeckWaveformThumbnail::rebuildLater()
{
    stale = true;
    repaint();
}

void DeckWaveformThumbnail::resized()
{
    rebuildLater();
    refresh();
}

void DeckWaveformThumbnail::engineEvent (EngineEvent event, int index)
{
    using enum EngineEvent;
    if (index == deck() && (event == trackLeft || event == trackLoaded || event == loadFailed))
        rebuildLater();
}

float DeckWaveformThumbnail::xOf (double frame) const
{
    return loadedFrames > 0 ? static_cast<float> (frame / loadedFrames * getWidth()) : 0.0f;
}

int DeckWaveformThumbnail::playheadAt() const
{
    return loadedFrames > 0 ? juce::jlimit (0, getWidth(), static_cast<int> (xOf (watch->position))) : -1;
}

void DeckWaveformThumbnail::pollMoving()
{
    const auto next = playheadAt();
    if (next == playheadX)
        return;
    const auto from = std::min (next, playheadX), to = std::max (next, playheadX);
    playheadX = next;
    repaint (from - playheadWidth, 0, to - from + 2 * playheadWidth, getHeight());
}

void DeckWaveformThumbnail::pollCalm()
{
    if (const auto loaded = watch->loadedFrames; loaded != loadedFrames)
    {
        loadedFrames = loaded;
        playheadX = playheadAt();
        rebuildLater();
    }
    if (watch->places != places)
    {
        places = watch->places;
        repaint();
    }
}

void DeckWaveformThumbnail::mouseDown (const juce::MouseEvent& event)
{
    soughtX = -1.0f;
    mouseDrag (event);
}

void DeckWaveformThumbnail::mouseDrag (const juce::MouseEvent& event)
{
    if (event.mods.isLeftButtonDown())
        seekTo (juce::jlimit (0.0f, static_cast<float> (getWidth()), event.position.x));
}

void DeckWaveformThumbnail::seekTo (float x)
{
    if (x == soughtX || getWidth() < 1)
        return;
    soughtX = x;
    engine.transport.seekNormalised (deck(), static_cast<double> (x) / getWidth());
    refresh();
}

void DeckWaveformThumbnail::build (double scale)
{
    const auto width = std::max (1, juce::roundToInt (getWidth() * scale));
    const auto height = std::max (1, juce::roundToInt (getHeight() * scale));
    picture = juce::Image (juce::Image::RGB, width, height, false, juce::SoftwareImageType());
    pictureScale = scale;
    stale = false;
    ++buildCount;

    picture.clear (picture.getBounds(), palette::ground);
    if (loadedFrames < 1)
        return;
    const auto columns = ThumbnailColumns::of (*watch->overview, loadedFrames, width);
    juce::Image::BitmapData bitmap (picture, juce::Image::BitmapData::readWrite);
    const auto hue = palette::decks[static_cast<size_t> (deck())];
    const auto rowOf = [height] (int sample) { return (fullScale - sample) * height / (2 * fullScale); };
    for (int x = 0; x < width; ++x)
    {
        const auto top = rowOf (columns.most[static_cast<size_t> (x)]);
        const auto bottom = rowOf (columns.least[static_cast<size_t> (x)]);
        for (int y = std::min (top, height - 1); y < std::max (bottom, top + 1) && y < height; ++y)
            bitmap.setPixelColour (x, y, hue);
    }
}

void DeckWaveformThumbnail::paint (juce::Graphics& g)
{
    const auto scale = static_cast<double> (g.getInternalContext().getPhysicalPixelScaleFactor());
    if (stale || scale != pictureScale)
        build (scale);
    {
        const juce::Graphics::ScopedSaveState state (g);
        g.setImageResamplingQuality (juce::Graphics::lowResamplingQuality);
        g.drawImageTransformed (picture, juce::AffineTransform::scale (static_cast<float> (1.0 / scale)));
    }
    if (loadedFrames < 1)
        return;
    g.setColour (palette::ground.withAlpha (playedAlpha));
    g.fillRect (0, 0, playheadX, getHeight());
    paintMinutes (g);
    paintPlaces (g);
    g.setColour (palette::ink);
    g.fillRect (playheadX - playheadWidth / 2 - 1, 0, playheadWidth + 2, getHeight());
    g.setColour (palette::decks[static_cast<size_t> (deck())].brighter (0.6f));
    g.fillRect (playheadX - playheadWidth / 2, 0, playheadWidth, getHeight());
}

void DeckWaveformThumbnail::paintMinutes (juce::Graphics& g) const
{
    const auto step = xOf (watch->grid.sampleRate * 60.0);
    if (!(step > 2.0f))
        return;
    const auto withNumbers = step >= leastMinuteWidth && getHeight() >= 2 * minuteTextHeight;
    g.setFont (SMLookAndFeel::font (SMLookAndFeel::labelSize));
    for (int minute = 1; static_cast<float> (minute) * step < static_cast<float> (getWidth()); ++minute)
    {
        const auto x = juce::roundToInt (static_cast<float> (minute) * step);
        g.setColour (palette::value);
        g.fillRect (x, getHeight() - minuteTick, 1, minuteTick);
        if (!withNumbers)
            continue;
        const juce::String text (minute);
        const juce::Rectangle<int> chip (x + 1, getHeight() - minuteTextHeight,
                                         g.getCurrentFont().getStringWidth (text) + 4, minuteTextHeight);
        g.setColour (palette::ground.withAlpha (chipAlpha));
        g.fillRect (chip);
        g.setColour (palette::value);
        g.drawText (text, chip, juce::Justification::centred, false);
    }
}

void DeckWaveformThumbnail::paintPlaces (juce::Graphics& g) const
{
    if (places.loop.has_value())
    {
        const auto from = xOf (places.loop->in), to = xOf (places.loop->out);
        g.setColour ((places.loop->running ? palette::selected : palette::value).withAlpha (loopAlpha));
        g.fillRect (from, 0.0f, std::max (1.0f, to - from), static_cast<float> (getHeight()));
    }
    const auto mark = [&] (double frame, juce::Colour colour)
    {
        const auto x = juce::roundToInt (xOf (frame));
        g.setColour (colour);
        g.fillRect (x, 0, 1, getHeight());
        g.fillRect (x - flagSize + 1, 0, flagSize, flagSize);
    };
    if (places.startPoint.has_value())
        mark (*places.startPoint, palette::label);
    for (int slot = 0; slot < hotCueCount; ++slot)
        if (places.hasCue (slot))
            mark (places.cues[static_cast<size_t> (slot)], palette::cues[static_cast<size_t> (slot)]);
    // The cue point's flag stands at the foot.
    if (const auto slot = places.currentCue; slot >= 0 && slot < cueSlotCount && places.hasCue (slot))
    {
        g.setColour (palette::value);
        const auto x = juce::roundToInt (xOf (places.cues[static_cast<size_t> (slot)]));
        g.fillRect (x, getHeight() - flagSize, flagSize, flagSize);
    }
}

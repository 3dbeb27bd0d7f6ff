#include "ui/deckviews/DeckWaveformThumbnail.h"

#include "engine/CPlatterdex.h"
#include "skin/Palette.h"
#include "ui/deckviews/ThumbnailColumns.h"
#include "ui/look/SMLookAndFeel.h"

namespace
{
constexpr int fullScale = 32; ///< of the waveform data, 6 bits with sign
constexpr float playedAlpha = 0.5f, loopAlpha = 0.35f;
constexpr int playheadWidth = 2, flagWidth = 9, flagHeight = 11, footSize = 7;
constexpr float waveBrightness = 0.7f; ///< of the hue: the large waveform is the louder one
constexpr double nearSeconds = 30.0, blinkSeconds = 10.0;
constexpr juce::uint32 blinkMs = 400;
constexpr int warningWidth = 2;
constexpr int minuteTick = 4, minuteTextHeight = 11;
constexpr float chipAlpha = 0.75f;
constexpr float leastMinuteWidth = 24.0f; ///< below it the minutes are ticks without numbers
}

DeckWaveformThumbnail::DeckWaveformThumbnail (CPlatterdex& e, int deck)
    : PollingView (Pace::moving),
      engine (e),
      watch (e, deck),
      news (e, deck, [this] (EngineEvent event) { hear (event); })
{
    setOpaque (true);
    setRepaintsOnMouseActivity (false);
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

void DeckWaveformThumbnail::hear (EngineEvent event)
{
    using enum EngineEvent;
    if (event == trackLeft || event == trackLoaded || event == loadFailed)
        rebuildLater();
}

float DeckWaveformThumbnail::xOf (double frame) const
{
    return trackFrames > 0 ? static_cast<float> (frame / trackFrames * getWidth()) : 0.0f;
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

/** True from 30 s before the end on; within the last 10 s it comes and goes. */
bool DeckWaveformThumbnail::isEndNear() const
{
    if (!watch->playing || watch->loading || loadedFrames < 1)
        return false;
    const auto speed = std::max (0.01, watch->tempo);
    const auto left = (loadedFrames - watch->position) / (watch->grid.sampleRate * speed);
    return left <= nearSeconds && (left > blinkSeconds || engine.environment.clock() / blinkMs % 2 == 0);
}

void DeckWaveformThumbnail::pollCalm()
{
    if (const auto next = isEndNear(); std::exchange (warns, next) != next)
        repaint();
    if (watch->loadedFrames != loadedFrames || watch->trackFrames != trackFrames)
    {
        loadedFrames = watch->loadedFrames;
        trackFrames = watch->trackFrames;
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
    scrubs = event.mods.isLeftButtonDown() && event.mods.isShiftDown();
    mouseDrag (event);
}

void DeckWaveformThumbnail::mouseDrag (const juce::MouseEvent& event)
{
    if (scrubs && event.mods.isLeftButtonDown())
        seekTo (event);
}

void DeckWaveformThumbnail::mouseUp (const juce::MouseEvent& event)
{
    if (event.mods.isLeftButtonDown() && !std::exchange (scrubs, false)
        && !event.mouseWasDraggedSinceMouseDown())
        seekTo (event);
}

void DeckWaveformThumbnail::seekTo (const juce::MouseEvent& event)
{
    const auto x = juce::jlimit (0.0f, static_cast<float> (getWidth()), event.position.x);
    if (x == soughtX || getWidth() < 1)
        return;
    const auto& now = watch.look();
    const auto frame = static_cast<double> (x) / getWidth() * now.trackFrames;
    if (frame > now.loadedFrames)
        return; // is still to come
    soughtX = x;
    engine.transport.seekFrames (deck(), frame);
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
    const auto columns = ThumbnailColumns::of (*watch->overview, loadedFrames, trackFrames, width);
    const auto loadedWidth = static_cast<int> (
        std::min<int64_t> (width, static_cast<int64_t> (loadedFrames) * width / trackFrames + 1));
    juce::Image::BitmapData bitmap (picture, juce::Image::BitmapData::readWrite);
    const auto hue = palette::decks[static_cast<size_t> (deck())].withMultipliedBrightness (waveBrightness);
    const auto rowOf = [height] (int sample) { return (fullScale - sample) * height / (2 * fullScale); };
    for (int x = 0; x < width; ++x)
    {
        if (x >= loadedWidth)
        {
            bitmap.setPixelColour (x, height / 2, palette::line); // is still to come
            continue;
        }
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
    if (warns)
    {
        g.setColour (palette::danger);
        g.drawRect (getLocalBounds(), warningWidth);
    }
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
        const auto text = juce::String (minute) + "'";
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
    // Every mark has a dark edge, so that it is seen on the brightest wave.
    const auto mark = [&] (double frame, juce::Colour colour, const juce::String& number)
    {
        const auto x = juce::roundToInt (xOf (frame));
        // The cloth hangs before its pole, or behind it where the track has just begun.
        const juce::Rectangle<int> cloth (x >= flagWidth ? x - flagWidth + 1 : x, 0, flagWidth, flagHeight);
        g.setColour (palette::ink);
        g.fillRect (x - 1, 0, 3, getHeight());
        g.fillRect (cloth.expanded (1));
        g.setColour (colour);
        g.fillRect (x, 0, 1, getHeight());
        g.fillRect (cloth);
        g.setColour (palette::ink);
        g.setFont (SMLookAndFeel::font (SMLookAndFeel::labelSize));
        g.drawText (number, cloth, juce::Justification::centred, false);
    };
    if (places.startPoint.has_value())
        mark (*places.startPoint, palette::label, {});
    for (int slot = 0; slot < hotCueCount; ++slot)
        if (places.hasCue (slot))
            mark (places.cues[static_cast<size_t> (slot)], palette::cues[static_cast<size_t> (slot)],
                  juce::String (slot + 1));
    // The cue point's flag stands at the foot.
    if (const auto slot = places.currentCue; slot >= 0 && slot < cueSlotCount && places.hasCue (slot))
    {
        const auto x = juce::roundToInt (xOf (places.cues[static_cast<size_t> (slot)]));
        juce::Path foot;
        const auto left = static_cast<float> (x), bottom = static_cast<float> (getHeight());
        foot.addTriangle (left, bottom - footSize, left + footSize, bottom, left, bottom);
        g.setColour (palette::ink);
        g.strokePath (foot, juce::PathStrokeType (2.0f));
        g.setColour (palette::value);
        g.fillPath (foot);
    }
}

#include "ui/deckviews/scope/DeckPeakScope.h"

#include "engine/CPlatterdex.h"
#include "skin/Palette.h"
#include "tracks/PXAudioSampleBuffer.h"
#include "ui/deckviews/scope/PeakColumns.h"

#include <bit>

namespace
{
constexpr float barAlpha = 0.7f, beatAlpha = 0.35f;
constexpr double scrubGain = 0.01;
constexpr float wheelStep = 0.1f; ///< of travel, for one step of the zoom
constexpr float echoReach = 0.5f; ///< pixels
}

DeckPeakScope::DeckPeakScope (CPlatterdex& e, int deck)
    : PollingView (Pace::moving),
      putPointer ([] (juce::Point<float> place) { juce::Desktop::setMousePosition (place.roundToInt()); }),
      engine (e),
      watch (e, deck),
      image (palette::ground),
      news (e, deck, [this] (EngineEvent event) { hear (event); })
{
    setOpaque (true);
    setRepaintsOnMouseActivity (false);
}

void DeckPeakScope::redrawAll()
{
    image.invalidate();
    repaint();
}

void DeckPeakScope::setSamplesPerPixel (int samples)
{
    samples = juce::jlimit (leastSamplesPerPixel, mostSamplesPerPixel, samples);
    shared->scopeSamples = static_cast<int> (std::bit_floor (static_cast<unsigned> (samples)));
    refresh();
}

void DeckPeakScope::followZoom()
{
    if (std::exchange (zoom, shared->scopeSamples) != shared->scopeSamples)
        redrawAll();
}

void DeckPeakScope::resized()
{
    redrawAll();
    refresh();
}

void DeckPeakScope::hear (EngineEvent event)
{
    beats.forget();
    using enum EngineEvent;
    if (event == trackLeft || event == trackLoaded || event == loadFailed)
        redrawAll();
}

void DeckPeakScope::pollMoving()
{
    step (steps.due (juce::Time::getCurrentTime()));
    followZoom();
    const auto middle = getWidth() / 2;
    const auto reach = (middle + 1.0) * zoom;
    if (beats.update (watch, watch->position - reach, watch->position + reach))
        repaint();
    const auto pixel = static_cast<int64_t> (watch->position) / zoom;
    const auto before = loadedFrames;
    const auto shownEnd = (pixel + getWidth() / 2 + 1) * zoom;
    if (image.followLoading (loadedFrames, watch->loadedFrames,
                             PeakColumns { zoom / scale }.columnAt (before) - 1)
        && (before <= shownEnd || loadedFrames < before))
        repaint();
    if (std::exchange (shownPixel, pixel) != pixel)
        repaint();
}

void DeckPeakScope::mouseWheelMove (const juce::MouseEvent&, const juce::MouseWheelDetails& wheel)
{
    // A wheel's notch is a step; the small moves of a pad add up to one.
    wheelTravel += wheel.isReversed ? -wheel.deltaY : wheel.deltaY;
    if (std::abs (wheelTravel) < wheelStep)
        return;
    setSamplesPerPixel (wheelTravel > 0.0f ? zoom / 2 : zoom * 2);
    wheelTravel = 0.0f;
}

void DeckPeakScope::mouseDown (const juce::MouseEvent& event)
{
    lastMouseX = event.position.x;
    steps.begin();
}

void DeckPeakScope::mouseDrag (const juce::MouseEvent& event)
{
    if (!event.mods.isLeftButtonDown())
        return;
    const auto begin = event.mouseDownPosition;
    const auto move = event.position.x - std::exchange (lastMouseX, event.position.x);
    // The pointer's own way back to the begin comes as an event, too; it is no move of the hand.
    if (std::abs (event.position.x - begin.x) < echoReach)
        return;
    step (steps.add (static_cast<double> (move), event.eventTime));
    putPointer (localPointToGlobal (begin));
}

void DeckPeakScope::step (std::optional<double> move)
{
    if (move.has_value())
        engine.transport.dragJog (deck(), *move, scrubGain);
}

void DeckPeakScope::paintColumns (juce::Image& strip, int64_t first) const
{
    juce::Image::BitmapData bitmap (strip, juce::Image::BitmapData::readWrite);
    const PeakColumns columns { zoom / scale };
    const auto hue = palette::decks[static_cast<size_t> (deck())];
    const auto middle = bitmap.height / 2, line = std::max (1, juce::roundToInt (scale));
    const auto put = [&bitmap] (int x, int y, juce::Colour colour)
    { reinterpret_cast<juce::PixelRGB*> (bitmap.getPixelPointer (x, y))->set (colour.getPixelARGB()); };
    const auto frames =
        std::min (loadedFrames, watch.look().loadedFrames); // another track may just have begun
    for (int x = 0; x < bitmap.width; ++x)
    {
        for (int y = middle; y < middle + line; ++y)
            put (x, y, palette::line);
        auto inTrack = false;
        const auto peaks = columns.of (*watch->samples, frames, first + x, inTrack);
        if (!inTrack)
            continue;
        // 16 bits fill the height: shifted by 11 bits they would fill 32 rows.
        const auto rowOf = [&] (int sample) { return middle - ((sample * middle) >> 15); };
        const auto top = juce::jlimit (0, bitmap.height - 1, rowOf (peaks.most));
        const auto bottom = juce::jlimit (top + 1, bitmap.height, rowOf (peaks.least));
        for (int y = top; y < bottom; ++y)
            put (x, y, hue);
    }
}

void DeckPeakScope::paint (juce::Graphics& g)
{
    const auto now = static_cast<double> (g.getInternalContext().getPhysicalPixelScaleFactor());
    if (std::exchange (scale, now) != now)
        image.invalidate();
    const auto width = juce::roundToInt (getWidth() * scale), height = juce::roundToInt (getHeight() * scale);
    const auto middle = getWidth() / 2;
    const auto centre = juce::roundToInt (middle * scale);
    image.setSize (width, height);
    image.moveTo (PeakColumns { zoom / scale }.columnAt (static_cast<double> (shownPixel * zoom)) - centre,
                  [this] (auto& strip, int64_t first) { paintColumns (strip, first); });

    g.addTransform (juce::AffineTransform::scale (static_cast<float> (1.0 / scale)));
    g.setImageResamplingQuality (juce::Graphics::lowResamplingQuality);
    g.setOpacity (1.0f);
    image.paint (g, 0, 0, { 0, height });
    if (loadedFrames > 0)
    {
        paintBeats (g, centre, height);
        g.setColour (palette::accent);
        g.fillRect (centre, 0, std::max (1, juce::roundToInt (scale)), height);
    }
}

/** Lines of beats and, brighter, bars, in the screen's own pixels. */
void DeckPeakScope::paintBeats (juce::Graphics& g, int centre, int height) const
{
    const PeakColumns columns { zoom / scale };
    const auto left = columns.columnAt (static_cast<double> (shownPixel * zoom)) - centre;
    for (const auto& beat : beats.beats())
    {
        const auto x = columns.columnAt (beat.frame) - left;
        if (x < 0 || x >= getWidth() * scale)
            continue;
        g.setColour (palette::value.withAlpha (beat.fromDownbeat % 8 == 0 ? barAlpha : beatAlpha));
        g.fillRect (static_cast<int> (x), 0, std::max (1, juce::roundToInt (scale)), height);
    }
}

#include "ui/deckviews/DeckWaveform.h"

#include "engine/CPlatterdex.h"
#include "skin/Palette.h"
#include "skin/Skin.h"
#include "support/language/Translate.h"
#include "ui/deckviews/ColumnPainter.h"
#include "ui/look/FigureText.h"
#include "ui/look/SMLookAndFeel.h"
#include "ui/look/TimeText.h"

#include <limits>

namespace
{
constexpr int timeTop = 2, timeHeight = 41, timeHalfWidth = 60, textHalfWidth = 66;
constexpr int dragBelow = 47; ///< a drag that begins above this row takes the track with it
constexpr int dragImageHeight = 22, dragImageWidth = 240;
constexpr float dragImageAlpha = 0.6f;
constexpr int smallTop = 27, smallHeight = 15; ///< the line below the large time
constexpr double nearSeconds = 30.0, blinkSeconds = 10.0;
constexpr juce::uint32 blinkMs = 400;

// The hand leads the record: each step gives the jog the speed that takes the record to the hand within the time that the
// slowest steps, those of the clock, are apart, less what a jog loses by itself within 0.1 s.
constexpr double steerSeconds = 0.033, standsWithin = 32.0; ///< frames
constexpr int steerMs = 8;
constexpr double fastest = 50.0;
}

DeckWaveform::DeckWaveform (CPlatterdex& e, int deck)
    : PollingView (Pace::moving),
      engine (e),
      watch (e, deck),
      image (palette::ground),
      news (e, deck,
            [this] (EngineEvent)
            {
                beats.forget();
                redrawAll();
            })
{
    addAndMakeVisible (picture);
    setRepaintsOnMouseActivity (false);
}

DeckWaveform::~DeckWaveform()
{
    if (scratching)
        engine.transport.setScratch (deck(), false, false);
}

juce::Rectangle<int> DeckWaveform::timeArea (int width)
{
    return { width / 2 - textHalfWidth, timeTop, 2 * textHalfWidth, timeHeight };
}

void DeckWaveform::setNotice (const juce::StringArray& lines)
{
    notice = lines;
    pollCalm();
}

void DeckWaveform::resized()
{
    picture.setBounds (0, MarkPainter::numberTop, getWidth(), pictureBottom - MarkPainter::numberTop);
    redrawAll();
    refresh();
}

void DeckWaveform::redrawAll()
{
    image.invalidate();
    repaintPicture();
}

void DeckWaveform::repaintPicture()
{
    picture.repaint();
}

bool DeckWaveform::followLoading (int32_t loadedFrames)
{
    const auto before = shown.loadedFrames, from = before / framesPerOverviewEntry;
    if (!image.followLoading (shown.loadedFrames, loadedFrames, track.columnOf (from)))
        return false;
    // Columns beyond the right edge are not seen.
    const auto middle = getWidth() / 2;
    return loadedFrames < before || from <= shown.entry + static_cast<int64_t> (middle / track.zoom) + 1;
}

bool DeckWaveform::followBeats()
{
    const auto middle = static_cast<double> (shown.entry * framesPerOverviewEntry);
    const auto half = getWidth() / 2;
    const auto reach = (half + 1.0) * framesPerOverviewEntry / zoom->zoom();
    return beats.update (watch, middle - reach, middle + reach);
}

void DeckWaveform::pollMoving()
{
    if (scratching)
        steer();
    else if (halfPace && std::exchange (restsNow, !restsNow))
        return;

    const auto entry = static_cast<int64_t> (watch->position) / framesPerOverviewEntry;
    auto changed = std::exchange (shown.entry, entry) != entry;
    changed |= followLoading (watch->loadedFrames);
    changed |= followBeats();

    const auto spectral = engine.settings.editor[EditorPreference::spectralWaveform] != 0;
    if (std::exchange (shown.spectral, spectral) != spectral)
    {
        image.invalidate();
        changed = true;
    }
    const auto gain = zoom->fills ? double { ColumnPainter::reach } / ColumnPainter::fullScale : 1.0;
    if (shownZoom != zoom->zoom() || shownGain != gain)
    {
        shownZoom = zoom->zoom();
        shownGain = gain;
        image.invalidate();
        changed = true;
    }
    if (watch->places != shown.places)
    {
        shown.places = watch->places;
        changed = true;
    }
    if (changed)
        repaintPicture();

    if (auto times = readTimes(); times != shown.times)
    {
        shown.times = std::move (times);
        repaint (timeArea (getWidth()));
    }
}

void DeckWaveform::pollCalm()
{
    auto next = readNotice();
    if (next == shown.notice)
        return;
    shown.notice = std::move (next);
    repaintPicture();
}

/** The time to the end of the track at the speed that plays, or that the pitch fader will give. */
double DeckWaveform::secondsLeft() const
{
    const auto rate = watch->grid.sampleRate;
    const auto speed = watch->playing && !watch->scratching ? watch->tempo : 1.0 + watch->pitchShare;
    return std::max (0.0, (watch->trackFrames - watch->position) / rate) / (speed > 0.01 ? speed : 1.0);
}

juce::String DeckWaveform::readNextCue() const
{
    if (!watch->grid.isKnown() || !(watch->grid.bpm > 0.0))
        return {};
    auto nearest = std::numeric_limits<double>::infinity();
    int slot = -1;
    for (int i = 0; i < cueSlotCount; ++i)
        if (const auto ahead = watch->places.cues[static_cast<size_t> (i)] - watch->position;
            watch->places.hasCue (i) && ahead > 0.0 && ahead < nearest)
        {
            nearest = ahead;
            slot = i;
        }
    if (slot < 0)
        return {};
    const auto beats =
        static_cast<int> (std::ceil (nearest / watch->grid.sampleRate * watch->grid.bpm / 60.0 - 0.01));
    return "CUE " + juce::String (slot + 1) + "  " + juce::String (beats / 4) + "."
           + juce::String (beats % 4);
}

DeckWaveform::Times DeckWaveform::readTimes() const
{
    const auto rate = watch->grid.sampleRate;
    if (watch->loadedFrames < 1 || !(rate > 0.0))
        return { timeText (std::numeric_limits<double>::quiet_NaN()) };
    const auto left = secondsLeft();
    Times times { timeText (watch->position / rate), "-" + timeText (left), readNextCue() };
    if (remainingTimeShown)
        std::swap (times.large, times.small);
    using End = Times::End;
    if (watch->playing && !watch->loading && left <= nearSeconds)
    {
        const auto isOut = left <= blinkSeconds && engine.environment.clock() / blinkMs % 2 != 0;
        times.end = isOut ? End::blinks : End::near;
    }
    return times;
}

juce::StringArray DeckWaveform::readNotice() const
{
    if (notice.isEmpty() && watch->loading)
        return { tr ("LOADING...") };
    return notice;
}

void DeckWaveform::mouseDown (const juce::MouseEvent& event)
{
    dragStarted = false;
    if (!event.mods.isLeftButtonDown() || event.y < pictureTop || event.y > pictureBottom)
        return;
    scratching = true;
    handX = 0.0f;
    heldFrame = watch.look().position;
    steeredMs = 0;
    engine.transport.setScratch (deck(), true, false);
}

void DeckWaveform::mouseDrag (const juce::MouseEvent& event)
{
    if (scratching)
    {
        handX = event.position.x - event.mouseDownPosition.x;
        // A mouse that reports a thousand times a second needs no more steps than another.
        if (const auto now = event.eventTime.toMilliseconds(); std::abs (now - steeredMs) >= steerMs)
        {
            steeredMs = now;
            steer();
        }
    }
    else if (event.mods.isLeftButtonDown() && event.getMouseDownY() < dragBelow && !dragStarted
             && event.mouseWasDraggedSinceMouseDown())
    {
        dragStarted = true;
        if (watch->loadedFrames > 0)
            beginTrackDrag (pictureOfStripAt (event.getMouseDownPosition()));
    }
}

void DeckWaveform::mouseUp (const juce::MouseEvent& event)
{
    if (std::exchange (scratching, false))
    {
        engine.transport.setScratch (deck(), false, false);
        return;
    }
    const auto fromCentre = std::abs (event.x - getWidth() / 2);
    if (event.mods.isLeftButtonDown() && !dragStarted && !event.mouseWasDraggedSinceMouseDown()
        && event.y < pictureTop && fromCentre <= timeHalfWidth)
    {
        remainingTimeShown = !remainingTimeShown;
        refresh();
    }
}

/** Gives the jog the speed that brings the record below the hand: a pixel of the hand is a pixel of the wave. */
void DeckWaveform::steer()
{
    const auto& now = watch.look();
    const auto rate = now.grid.sampleRate;
    if (!now.scratching || !(rate > 0.0))
        return;
    const auto wanted = heldFrame - static_cast<double> (handX) * framesPerOverviewEntry / zoom->zoom();
    const auto away = wanted - now.position;
    const auto speed =
        std::abs (away) < standsWithin ? 0.0 : std::clamp (away / (rate * steerSeconds), -fastest, fastest);
    engine.transport.dragJog (deck(), speed, -1.0); // this share of the way to it: all
}

void DeckWaveform::mouseWheelMove (const juce::MouseEvent& event, const juce::MouseWheelDetails& wheel)
{
    if (event.y < pictureTop || event.y > pictureBottom || wheel.deltaY == 0.0f || wheel.isInertial)
        return;
    zoom->turn (wheel.deltaY > 0.0f ? 1 : -1);
    refresh();
}

void DeckWaveform::beginTrackDrag (const juce::Image& picture)
{
    if (auto* container = juce::DragAndDropContainer::findParentDragContainerFor (this))
        container->startDragging (dragDescription, this, juce::ScaledImage (picture));
}

/** The part of the strip that the hand took hold of, with all that the strip shows there. */
juce::Image DeckWaveform::pictureOfStripAt (juce::Point<int> place)
{
    auto* parent = getParentComponent();
    auto& strip = parent != nullptr ? *parent : static_cast<juce::Component&> (*this);
    const auto area = juce::Rectangle<int> (dragImageWidth, dragImageHeight)
                          .withCentre (strip.getLocalPoint (this, place))
                          .constrainedWithin (strip.getLocalBounds());
    auto picture =
        strip.createComponentSnapshot (area, false).convertedToFormat (juce::Image::ARGB).createCopy();
    picture.multiplyAllAlphas (dragImageAlpha);
    return picture;
}

void DeckWaveform::paint (juce::Graphics& g)
{
    using End = Times::End;
    const auto& times = shown.times;
    auto area = timeArea (getWidth());
    auto small = area.withY (smallTop).withHeight (smallHeight);
    const auto ofTime = times.nextCue.isEmpty() ? small : small.removeFromLeft (small.getWidth() / 2);
    if (times.end == End::near)
    {
        g.setColour (palette::danger);
        g.fillRect (remainingTimeShown ? area.withBottom (smallTop) : ofTime);
    }
    const auto isKnown = shown.loadedFrames > 0;
    const auto colourOf = [&] (bool isRemaining)
    {
        return isRemaining && times.end == End::near ? palette::textOn (palette::danger)
               : isKnown                             ? palette::value
                                                     : palette::label;
    };
    g.setColour (colourOf (remainingTimeShown));
    g.setFont (SMLookAndFeel::font (SMLookAndFeel::figureSize));
    drawFigures (g, times.large, area.withBottom (smallTop));
    g.setColour (colourOf (!remainingTimeShown));
    g.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
    drawFigures (g, times.small, ofTime);
    g.setColour (palette::label);
    g.setFont (SMLookAndFeel::labelFont());
    g.drawText (times.nextCue, small, juce::Justification::centredRight, false);
}

/** The strip's ground: the end of its head, and below it the well of the wave. */
void DeckWaveform::paintGround (juce::Graphics& g) const
{
    constexpr int wellTop = pictureTop + 2; // below the edge that the well begins with
    const auto strip = skin::strip ("deck_strip", g);
    const juce::Rectangle<int> middle (strip.width / 3, MarkPainter::numberTop, strip.width / 3,
                                       wellTop - MarkPainter::numberTop);
    for (int x = 0; x < getWidth(); x += middle.getWidth())
        strip.drawPart (g, { x, middle.getY() }, middle, 0);
    g.setColour (palette::ground);
    g.fillRect (0, wellTop, getWidth(), pictureBottom - wellTop);
}

void DeckWaveform::paintPicture (juce::Graphics& g)
{
    g.setOrigin (0, -MarkPainter::numberTop);
    paintGround (g);
    const auto now =
        TrackScale::ofScreen (g.getInternalContext().getPhysicalPixelScaleFactor(), zoom->zoom());
    if (std::exchange (track, now) != now)
        image.invalidate();
    const auto middle = getWidth() / 2;
    const auto width = track.length (getWidth()), centre = track.length (middle);
    const auto left = track.columnOf (shown.entry) - centre;
    const ColumnPainter columns { *watch->overview,
                                  shown.loadedFrames,
                                  shown.spectral,
                                  palette::decks[static_cast<size_t> (deck())],
                                  track,
                                  shownGain };
    image.setSize (width, track.length (ColumnPainter::imageHeight));
    lastColumnsDrawn =
        image.moveTo (left, [&columns] (auto& strip, int64_t first) { columns.paint (strip, first); });

    const auto layout = MarkLayout::of (beats.beats(), shown.places, track, left, width);
    marks.prepare (track, deck());
    {
        // From here on in the screen's own pixels, so that nothing is blurred.
        const juce::Graphics::ScopedSaveState state (g);
        g.addTransform (juce::AffineTransform::scale (static_cast<float> (1.0 / track.scale)));
        g.setImageResamplingQuality (juce::Graphics::lowResamplingQuality);
        g.setOpacity (1.0f);
        const auto top = track.length (imageTop);
        // Only the rows where a column can be.
        const auto reach = track.length (ColumnPainter::reach);
        const auto first = track.length (ColumnPainter::centreLine) - reach;
        image.paint (g, 0, top, { first, std::min (first + 2 * reach, image.height()) });
        const juce::Range<int> rows (top, top + image.height());
        if (layout.unreachable > 0)
            marks.paintUnreachable (g, layout.unreachable, rows);
        if (layout.loop.has_value())
            marks.paintLoop (g, *layout.loop, rows);
        marks.paintMarks (g, layout);
        if (shown.loadedFrames > 0)
            marks.paintPlayhead (g, centre);
    }
    paintNotice (g);
}

void DeckWaveform::paintNotice (juce::Graphics& g) const
{
    if (shown.notice.isEmpty())
        return;
    constexpr int lineHeight = 20, boxWidth = 240, centreRow = imageTop + ColumnPainter::centreLine;
    auto box =
        juce::Rectangle<int> (std::min (boxWidth, getWidth() - 8), lineHeight * shown.notice.size() + 8)
            .withCentre ({ getWidth() / 2, centreRow });
    // Leaves the half behind the playhead free: the first beats shall be seen while a track loads.
    if (notice.isEmpty())
        box = box.withWidth (std::min (box.getWidth(), getWidth() / 2 - 8)).withX (4);
    SMLookAndFeel::fillRaised (g, box, palette::well);
    g.setColour (palette::value);
    g.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
    box.reduce (4, 4);
    for (const auto& line : shown.notice)
        g.drawFittedText (line, box.removeFromTop (lineHeight), juce::Justification::centred, 1);
}

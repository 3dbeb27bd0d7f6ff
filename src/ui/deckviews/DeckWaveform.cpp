#include "ui/deckviews/DeckWaveform.h"

#include "engine/CPlatterdex.h"
#include "skin/Palette.h"
#include "skin/Skin.h"
#include "ui/deckviews/ColumnPainter.h"
#include "ui/look/FigureText.h"
#include "ui/look/SMLookAndFeel.h"
#include "ui/look/TimeText.h"

#include <limits>

namespace
{
constexpr int timeTop = 12, timeHeight = 28, timeHalfWidth = 60;
constexpr int dragBelow = 47; ///< a drag that begins above this row takes the track with it
constexpr int dragImageHeight = 22, dragImageWidth = 240;
constexpr float dragImageAlpha = 0.6f;
constexpr double scratchGain = 0.02;
}

DeckWaveform::DeckWaveform (CPlatterdex& e, int deck)
    : PollingView (Pace::moving),
      engine (e),
      watch (e, deck),
      image (palette::ground)
{
    addAndMakeVisible (picture);
    engine.listeners.add (*this);
    setRepaintsOnMouseActivity (false);
}

DeckWaveform::~DeckWaveform()
{
    engine.listeners.remove (*this);
    if (scratching)
        engine.transport.setScratch (deck(), false, false);
}

juce::Rectangle<int> DeckWaveform::timeArea (int width)
{
    return { width / 2 - timeHalfWidth, timeTop, 2 * timeHalfWidth, timeHeight };
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

void DeckWaveform::engineEvent (EngineEvent event, int index)
{
    using enum EngineEvent;
    if (index != deck())
        return;
    beats.forget();
    if (event == loadBegan || event == trackLeft || event == waveformReady || event == trackLoaded
        || event == loadFailed)
        redrawAll();
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
    const auto before = std::exchange (shown.loadedFrames, loadedFrames);
    if (loadedFrames == before)
        return false;
    if (loadedFrames < before)
    {
        image.invalidate();
        return true;
    }
    const auto from = before / framesPerOverviewEntry;
    image.invalidateFrom (track.columnOf (from));
    return from <= shown.entry + getWidth() / 2 + 1;
}

bool DeckWaveform::followBeats()
{
    const auto middle = static_cast<double> (shown.entry * framesPerOverviewEntry);
    const auto reach = (getWidth() / 2 + 1.0) * framesPerOverviewEntry;
    return beats.update (watch, middle - reach, middle + reach);
}

void DeckWaveform::pollMoving()
{
    if (scratching)
        step (steps.due (juce::Time::getCurrentTime()));

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
    if (watch->places != shown.places)
    {
        shown.places = watch->places;
        changed = true;
    }
    if (changed)
        repaintPicture();

    if (auto time = readTime(); time != shown.time)
    {
        shown.time = std::move (time);
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

juce::String DeckWaveform::readTime() const
{
    const auto rate = watch->grid.sampleRate, position = watch->position;
    if (watch->loadedFrames < 1 || !(rate > 0.0))
        return timeText (std::numeric_limits<double>::quiet_NaN());
    return remainingTimeShown ? "-" + timeText (std::max (0.0, (watch->loadedFrames - position) / rate))
                              : timeText (position / rate);
}

juce::StringArray DeckWaveform::readNotice() const
{
    if (notice.isEmpty() && watch->loading)
        return { "LOADING..." };
    return notice;
}

void DeckWaveform::mouseDown (const juce::MouseEvent& event)
{
    dragStarted = false;
    if (!event.mods.isLeftButtonDown() || event.y < pictureTop || event.y > pictureBottom)
        return;
    scratching = true;
    lastMouseX = event.position.x;
    steps.begin();
    engine.transport.setScratch (deck(), true, false);
}

void DeckWaveform::mouseDrag (const juce::MouseEvent& event)
{
    if (scratching)
    {
        const auto move = event.position.x - std::exchange (lastMouseX, event.position.x);
        step (steps.add (static_cast<double> (move), event.eventTime));
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

void DeckWaveform::step (std::optional<double> move)
{
    if (move.has_value() && watch.look().scratching)
        engine.transport.dragJog (deck(), *move, scratchGain);
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
    g.setColour (shown.loadedFrames > 0 ? palette::value : palette::label);
    g.setFont (SMLookAndFeel::font (SMLookAndFeel::figureSize));
    drawFigures (g, shown.time, timeArea (getWidth()));
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
    const auto now = TrackScale::ofScreen (g.getInternalContext().getPhysicalPixelScaleFactor());
    if (std::exchange (track, now).scale != now.scale)
        image.invalidate();
    const auto width = track.length (getWidth()), centre = track.length (getWidth() / 2);
    const auto left = track.columnOf (shown.entry) - centre;
    const ColumnPainter columns { *watch->overview, shown.loadedFrames, shown.spectral,
                                  palette::decks[static_cast<size_t> (deck())], track };
    image.setSize (width, track.length (ColumnPainter::imageHeight));
    lastColumnsDrawn =
        image.moveTo (left, [&columns] (auto& bitmap, int64_t first) { columns.paint (bitmap, first); });

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
        g.drawImageAt (image.image().getClippedImage ({ 0, first, width, 2 * reach }), 0, top + first);
        const juce::Range<int> rows (top, top + image.image().getHeight());
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
    SMLookAndFeel::fillRaised (g, box, palette::well);
    g.setColour (palette::value);
    g.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
    box.reduce (4, 4);
    for (const auto& line : shown.notice)
        g.drawFittedText (line, box.removeFromTop (lineHeight), juce::Justification::centred, 1);
}

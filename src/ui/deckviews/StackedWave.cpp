#include "ui/deckviews/StackedWave.h"

#include "engine/CPlatterdex.h"
#include "skin/Palette.h"
#include "ui/deckviews/ColumnPainter.h"
#include "ui/look/SMLookAndFeel.h"
#include "ui/panel/PanelPaint.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double usualRate = 44100.0; ///< at which an entry is a logical pixel at the usual zoom
constexpr double slowest = 0.05;      ///< of the tempos that have a picture of their own

// Tempos within this share of each other are drawn alike: less than a pixel at the edge of the widest window. A synced deck's
// tempo swings by less, so that its picture is moved, not drawn.
constexpr double sameTempo = 0.0004;

constexpr int beatTick = 7, clothWidth = 12, clothHeight = 12, footSize = 8, numberHeight = 12;
constexpr double numberedZoom = 2.0; ///< from here on each bar has its number
constexpr int playheadWidth = 2;
constexpr float chipAlpha = 0.75f;
constexpr int letterSize = 16, letterMargin = 4;
constexpr int markReach = 64; ///< logical pixels that a mark's number or cloth reaches to a side, at most
constexpr float beatAlpha = 0.7f, barAlpha = 0.4f, phraseAlpha = 0.8f;
constexpr float runningFill = 0.22f, waitingFill = 0.12f;
}

StackedWave::StackedWave (CPlatterdex& e, int deck)
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
    setOpaque (true);
    setRepaintsOnMouseActivity (false);
}

void StackedWave::redrawAll()
{
    image.invalidate();
    repaint();
}

void StackedWave::resized()
{
    redrawAll();
    refresh();
}

/** Logical pixels for an entry, so that a second of what is heard is as long in every row. */
double StackedWave::wantedZoom() const
{
    const auto rate = watch->grid.sampleRate > 0.0 ? watch->grid.sampleRate : usualRate;
    const auto tempo = watch->playing ? std::abs (watch->tempo) : 1.0 + watch->pitchShare;
    return zoom->zoom() * usualRate / (rate * std::max (slowest, tempo));
}

bool StackedWave::followZoom()
{
    // Under a hand the record has no tempo.
    if (watch->scratching)
        return false;
    const auto wanted = wantedZoom();
    if (std::abs (wanted - track.zoom) <= sameTempo * track.zoom)
        return false;
    track.zoom = wanted;
    image.invalidate();
    return true;
}

void StackedWave::pollMoving()
{
    auto changed = followZoom();
    changed |= image.followLoading (loadedFrames, watch->loadedFrames,
                                    track.columnOf (loadedFrames / framesPerOverviewEntry) - 1);
    const auto next = track.columnAt (watch->position);
    changed |= std::exchange (column, next) != next;
    const auto middle = getWidth() / 2;
    const auto reach = (middle + markReach) * framesPerOverviewEntry / track.zoom;
    auto redrawn = beats.update (watch, watch->position - reach, watch->position + reach) && !beats.hasSlid();
    const auto inColours = engine.settings.editor[EditorPreference::spectralWaveform] != 0;
    redrawn |= std::exchange (spectral, inColours) != inColours;
    if (watch->places != places)
    {
        places = watch->places;
        redrawn = true;
    }
    if (redrawn)
        image.invalidate();
    if (changed || redrawn || letterLit != watch->playing)
        repaint();
}

void StackedWave::mouseWheelMove (const juce::MouseEvent&, const juce::MouseWheelDetails& wheel)
{
    if (wheel.deltaY == 0.0f || wheel.isInertial)
        return;
    zoom->turn (wheel.deltaY > 0.0f ? 1 : -1);
    refresh();
}

void StackedWave::paint (juce::Graphics& g)
{
    const auto scale = TrackScale::ofScreen (g.getInternalContext().getPhysicalPixelScaleFactor()).scale;
    if (std::exchange (track.scale, scale) != scale)
    {
        image.invalidate();
        column = track.columnAt (watch->position);
    }
    const auto width = track.length (getWidth()), height = track.length (getHeight());
    const auto middle = getWidth() / 2;
    leftColumn = column - track.length (middle);
    image.setSize (width, height);
    lastColumnsDrawn =
        image.moveTo (leftColumn, [this] (auto& strip, int64_t first) { drawStrip (strip, first); });

    // In the screen's own pixels, so that nothing is blurred.
    g.addTransform (juce::AffineTransform::scale (static_cast<float> (1.0 / scale)));
    g.setImageResamplingQuality (juce::Graphics::lowResamplingQuality);
    g.setOpacity (1.0f);
    image.paint (g, 0, 0, { 0, height });
    paintPole (g, track.length (middle), palette::decks[static_cast<size_t> (deck())].brighter (0.6f),
               playheadWidth);
    paintLetter (g);
}

MarkLayout StackedWave::marksOf (int64_t left, int width) const
{
    return MarkLayout::of (beats.beats(), places, track, left, width);
}

/** Draws the columns that came into view with all that stands still in the picture, so that a tick only moves it. */
void StackedWave::drawStrip (juce::Image& strip, int64_t first) const
{
    const auto half = getHeight() / 2;
    const ColumnPainter columns { *watch->overview,
                                  loadedFrames,
                                  spectral,
                                  palette::decks[static_cast<size_t> (deck())],
                                  track,
                                  static_cast<double> (half) / ColumnPainter::fullScale,
                                  half };
    columns.paint (strip, first);
    // Marks reach over the edges of the strip that they stand in.
    const auto reach = track.length (markReach);
    const auto marks = marksOf (first - reach, strip.getWidth() + 2 * reach);
    const auto context = getLookAndFeel().createGraphicsContext (strip, { -reach, 0 }, strip.getBounds());
    juce::Graphics g (*context);
    if (marks.loop.has_value())
        paintLoop (g, *marks.loop);
    paintBeats (g, marks.beats);
    paintFlags (g, marks.flags);
    g.setColour (palette::line);
    g.fillRect (reach, strip.getHeight() - track.length (1), strip.getWidth(), track.length (1));
}

void StackedWave::paintLoop (juce::Graphics& g, const MarkLayout::Region& loop) const
{
    g.setColour (loop.running ? palette::selected.withAlpha (runningFill)
                              : palette::value.withAlpha (waitingFill));
    g.fillRect (loop.left, 0, loop.right - loop.left, track.length (getHeight()));
}

/** Beats are ticks at both edges, where they meet those of the neighbours; bars go through, phrases have their numbers. */
void StackedWave::paintBeats (juce::Graphics& g, const std::vector<Mark>& marks) const
{
    const auto height = track.length (getHeight()), tick = track.length (beatTick), line = track.length (1);
    g.setFont (SMLookAndFeel::font (static_cast<float> (SMLookAndFeel::labelSize * track.scale)));
    for (const auto& beat : marks)
    {
        g.setColour (palette::value.withAlpha (beatAlpha));
        g.fillRect (beat.x, 0, line, tick);
        g.fillRect (beat.x, height - tick, line, tick);
        if (beat.kind == MarkKind::beat)
            continue;
        g.setColour (palette::value.withAlpha (beat.kind == MarkKind::bar ? barAlpha : phraseAlpha));
        g.fillRect (beat.x, tick, line, height - 2 * tick);
        if (beat.kind == MarkKind::bar && zoom->zoom() < numberedZoom)
            continue; // phrases alone: a text costs as much as the row's wave
        // On a dark chip, which a loud wave does not drown.
        const auto number = juce::String (beat.number);
        const juce::Rectangle<int> chip (beat.x + line, height - track.length (numberHeight + 1),
                                         g.getCurrentFont().getStringWidth (number) + track.length (4),
                                         track.length (numberHeight));
        g.setColour (palette::ground.withAlpha (chipAlpha));
        g.fillRect (chip);
        g.setColour (palette::value);
        g.drawText (number, chip, juce::Justification::centred, false);
    }
}

/** A line from edge to edge, with a dark flank on either side. */
void StackedWave::paintPole (juce::Graphics& g, int x, juce::Colour colour, int width) const
{
    const auto line = track.length (1), height = track.length (getHeight());
    g.setColour (palette::ink);
    g.fillRect (x - line, 0, (width + 2) * line, height);
    g.setColour (colour);
    g.fillRect (x, 0, width * line, height);
}

void StackedWave::paintFlags (juce::Graphics& g, const std::vector<Mark>& marks) const
{
    const auto line = track.length (1), height = track.length (getHeight());
    for (const auto& flag : marks)
    {
        const auto isHotCue = flag.kind == MarkKind::hotCue;
        if (flag.kind == MarkKind::cuePoint)
        {
            juce::Path foot;
            const auto x = static_cast<float> (flag.x), bottom = static_cast<float> (height),
                       size = static_cast<float> (track.length (footSize));
            foot.addTriangle (x, bottom - size, x + size, bottom, x, bottom);
            g.setColour (palette::ink);
            g.strokePath (foot, juce::PathStrokeType (2.0f * static_cast<float> (line)));
            g.setColour (palette::value);
            g.fillPath (foot);
            continue;
        }
        const auto colour = isHotCue       ? palette::cues[static_cast<size_t> (flag.number - 1)]
                            : flag.running ? palette::selected
                                           : palette::label;
        paintPole (g, flag.x, colour);
        if (!isHotCue)
            continue;
        // Before its pole: what begins at the mark is free to be seen.
        const juce::Rectangle<int> cloth (flag.x + line - track.length (clothWidth), 0,
                                          track.length (clothWidth), track.length (clothHeight));
        g.setColour (colour);
        g.fillRect (cloth);
        g.setColour (palette::ink);
        g.setFont (SMLookAndFeel::font (static_cast<float> (SMLookAndFeel::labelSize * track.scale)));
        g.drawText (juce::String (flag.number), cloth, juce::Justification::centred, false);
    }
}

/** A picture of its own: a text costs as much as the row's wave. */
void StackedWave::paintLetter (juce::Graphics& g)
{
    const auto size = track.length (letterSize) + 2 * track.length (1);
    if (std::exchange (letterLit, watch->playing) != watch->playing || letter.getWidth() != size)
        letter = drawLetter();
    const auto place = track.length (letterMargin) - track.length (1);
    g.drawImageAt (letter, place, place);
}

juce::Image StackedWave::drawLetter() const
{
    const auto edge = track.length (1), size = track.length (letterSize);
    juce::Image made (juce::Image::RGB, size + 2 * edge, size + 2 * edge, false, juce::SoftwareImageType());
    const auto context = getLookAndFeel().createGraphicsContext (made, {}, made.getBounds());
    juce::Graphics g (*context);
    g.fillAll (palette::ink);
    const auto chip = made.getBounds().reduced (edge);
    g.setColour (letterLit ? palette::decks[static_cast<size_t> (deck())] : palette::label);
    g.fillRect (chip);
    g.setColour (palette::ink);
    g.setFont (SMLookAndFeel::font (static_cast<float> (SMLookAndFeel::valueSize * track.scale)));
    g.drawText (PanelPaint::letterOf (deck()), chip, juce::Justification::centred, false);
    return made;
}

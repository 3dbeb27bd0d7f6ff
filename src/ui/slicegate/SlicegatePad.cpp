#include "ui/slicegate/SlicegatePad.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/envelope/EnvGeometry.h"
#include "ui/look/OpenMenu.h"
#include "ui/look/SMLookAndFeel.h"
#include "ui/look/ShortText.h"
#include "ui/panel/PanelPaint.h"

namespace
{
constexpr int margin = 4, nameHeight = 13, barHeight = 3;
constexpr float curveAlpha = 0.4f, lineWidth = 2.0f, pathStep = 0.5f;

/** True for a curve that acts on nothing: it holds the deck where it is, or lets all of it through. */
bool isNeutral (const Envelope& curve)
{
    const auto points = curve.allPoints();
    return std::all_of (points.begin(), points.end(),
                        [] (const EnvelopePoint& p) { return p.value == 1.0f; });
}

const juce::Rectangle<int> nameArea { margin, 2, SlicegatePad::width - 2 * margin, nameHeight };
const juce::Rectangle<float> curveArea { margin, 17.0f, SlicegatePad::width - 2.0f * margin, 23.0f };
const juce::Rectangle<int> barArea { 0, SlicegatePad::height - barHeight - 1, SlicegatePad::width,
                                     barHeight };
}

SlicegatePad::SlicegatePad (CPlatterdex& e, int d, int p)
    : PXImageButton ("_slicegatePad"),
      engine (e),
      state (e.slicegates[static_cast<size_t> (d)]),
      deck (d),
      pad (p),
      popup (e, d, p)
{
    setSize (width, height);
    setStrip (skin::deckName ("pad_52", deck));
    const auto constant = "SLICEGATE_PAD_" + PanelPaint::letterOf (deck) + "_" + juce::String (pad + 1);
    bind (engine, CommandTable::numberOf (constant.toRawUTF8()));
    onRightClick = [this] { openPopup(); };
    readContents();
}

void SlicegatePad::openPopup()
{
    juce::PopupMenu menu;
    popup.fill (menu);
    openMenu (menu, *this, juce::PopupMenu::Options().withTargetComponent (this),
              [this] (int id) { popup.choose (id, *this); });
}

void SlicegatePad::readContents()
{
    const auto full = PadMenu::nameOf (engine, deck, pad);
    name = shortText (full, SMLookAndFeel::labelFont(), nameArea.getWidth());
    setTooltip (tr ("Pad %1.%2: %3\nRight click: Open popup menu with extended options for this pad.",
                    PanelPaint::letterOf (deck), pad + 1, full));

    const EnvGeometry place (curveArea, {}, 0.0f);
    volume.clear();
    time.clear();
    if (const auto curve = state.volumeCurves().copy (pad);
        state.volumeCurves().isEnabled (pad) && !isNeutral (curve))
    {
        volume = place.path (curve, pathStep);
        volume.lineTo (place.x (curve.absoluteTime (Envelope::maxPoints)), curveArea.getBottom());
        volume.lineTo (curveArea.getBottomLeft());
        volume.closeSubPath();
    }
    if (const auto curve = state.timeCurves().copy (pad);
        state.timeCurves().isEnabled (pad) && !isNeutral (curve))
        time = place.path (curve, pathStep);
}

void SlicegatePad::poll()
{
    PXImageButton::poll();
    Shown next { state.padState (pad), 0, state.revision (pad) };
    if (next.state == PadState::running)
        next.barWidth = juce::roundToInt (state.padProgress (pad) * width);
    if (next == shown)
        return;
    if (next.revision != shown.revision)
        readContents();
    const auto onlyBar = next.state == shown.state && next.revision == shown.revision;
    shown = next;
    onlyBar ? repaint (barArea) : repaint();
}

void SlicegatePad::paint (juce::Graphics& g)
{
    PXImageButton::paint (g);
    const auto isLit = shownPicture() >= skin::normalOn;
    const auto dark = palette::textOn (palette::decks[static_cast<size_t> (deck)]);
    {
        const juce::Graphics::ScopedSaveState clip (g);
        g.reduceClipRegion (curveArea.expanded (1.0f).toNearestInt());
        g.setColour ((isLit ? dark : palette::padVolume).withAlpha (curveAlpha));
        g.fillPath (volume);
        g.setColour ((isLit ? dark : palette::padTime).withAlpha (curveAlpha));
        g.strokePath (time, juce::PathStrokeType (lineWidth, juce::PathStrokeType::mitered));
    }
    g.setFont (SMLookAndFeel::labelFont());
    g.setColour (isLit ? dark : palette::value);
    g.drawText (name, nameArea, juce::Justification::centredLeft, false);
    if (shown.state == PadState::queued)
    {
        g.setColour (palette::accent);
        g.drawText (tr ("> Next"), curveArea.toNearestInt(), juce::Justification::centred, false);
    }
    g.setColour (dark);
    g.fillRect (barArea.withWidth (shown.barWidth));
}

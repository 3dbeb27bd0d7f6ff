#include "ui/decks/DeckComponent.h"

#include "engine/CPlatterdex.h"
#include "skin/Palette.h"
#include "skin/Skin.h"
#include "support/files/AudioFileTypes.h"
#include "support/language/Translate.h"
#include "ui/command/KeyboardCommands.h"
#include "ui/decks/EditMenu.h"
#include "ui/decks/UtilityPanels.h"
#include "ui/drag/FileDragSource.h"
#include "ui/look/OpenMenu.h"
#include "ui/panel/PanelPaint.h"

namespace
{
using Kind = ControlSpec::Kind;
using Lit = ControlSpec::Lit;

constexpr juce::uint32 messageMs = 5000;
const juce::Rectangle<int> lampArea { 4, 4, 18, 24 }, loadArea { 24, 4, 22, 24 }, touchedArea { 0, 4, 2, 24 };
constexpr int dropTextHeight = 24, keyWidth = 36, keyGap = 4;

/** Shift lets a track go onto a deck that plays. */
bool isShiftHeld()
{
    return juce::ModifierKeys::getCurrentModifiersRealtime().isShiftDown();
}

// clang-format off
constexpr PlacedControl table[] {
    { { Kind::sign, "_syncButton",       "SYNC_LOCK_",              "sync_40", N_ ("Sync: keeps to the master's tempo and beat. Right click: syncs once"), Lit::plain, "SYNC_" }, {  4,  32, 40, 24 } },
    { { Kind::text, "_masterButton",     "MASTER_",                 N_ ("MSTR"), N_ ("Makes this deck the tempo master") }, {  4,  60, 40, 24 } },
    { { Kind::sign, "_nudgeMinusButton", "PITCH_BEND_NUDGE_MINUS_", "minus_18", N_ ("Pitch bend: slower while held") }, {  2,  88, 22, 24 } },
    { { Kind::sign, "_nudgePlusButton",  "PITCH_BEND_NUDGE_PLUS_",  "plus_18", N_ ("Pitch bend: faster while held") }, { 24,  88, 22, 24 } },
    { { Kind::sign, "_cueButton",        "CUE_STUTTER_",            "cue_40", N_ ("Cue. Stopped: sets the cue point; at the cue point, plays while held. Playing: goes back to the cue point"), Lit::deck }, {  4, 118, 40, 32 } },
    { { Kind::sign, "_playButton",       "PLAY_PAUSE_",             "play_40", N_ ("Play or pause. Right click: starts on the master's beat"), Lit::deck, "PLAY_SYNCHRONIZED_" }, {  4, 154, 40, 32 } },
};
// clang-format on
}

DeckComponent::DeckComponent (CPlatterdex& e, int deck, LoadDialog& l, const PreferencesFile& p)
    : ControlPanel (e),
      loader (l),
      preferences (p),
      watch (e, deck),
      lamp (e, deck),
      loadButton (own (std::make_unique<PXImageButton> ("_loadButton"))),
      waveform (e, deck),
      thumbnail (e, deck)
{
    setOpaque (true);
    setTitle (tr ("Deck %1", PanelPaint::letterOf (deck)));
    addControls (table, deck);

    lamp.setBounds (lampArea);
    addAndMakeVisible (lamp);
    loadButton.setStrip ("load_18");
    loadButton.setTooltip (
        tr ("Loads a track into deck %1. Right click for more.", PanelPaint::letterOf (deck)));
    loadButton.onClick = [this] { loader.open (watch.deck(), *this); };
    loadButton.onRightClick = [this] { openMenu(); };
    loadButton.setBounds (loadArea);

    addAndMakeVisible (waveform);
    addAndMakeVisible (thumbnail);
    gridSign.setComponentID ("_gridSign");
    gridSign.setTooltip (
        tr ("The analysis is not sure of the beats. Listen, then choose how they are to be counted"));
    gridSign.setToggleState (true, juce::dontSendNotification);
    gridSign.onFillMenu = [this] (juce::PopupMenu& menu) { EditMenu::addReadingsTo (menu, engine, watch); };
    addChildComponent (gridSign);
    makePanels();
}

DeckLayout DeckComponent::layout() const
{
    return { getWidth(), getHeight(), seatsLeft, seatsRight };
}

void DeckComponent::makePanels()
{
    const auto& preferences = engine.settings.editor;
    const int left = preferences[EditorPreference::deckPanelsLeft],
              right = preferences[EditorPreference::deckPanelsRight];
    if (left == seatsLeft && right == seatsRight)
        return;
    seatsLeft = left;
    seatsRight = right;
    resized();
}

bool DeckComponent::lacksRoomForPanels() const
{
    const auto areas = layout();
    return static_cast<int> (areas.leftPanels.size()) < seatsLeft
           || static_cast<int> (areas.rightPanels.size()) < seatsRight;
}

void DeckComponent::resized()
{
    const auto areas = layout();
    const auto fill = [this] (auto& panels, const auto& places, DeckContainerPanel::Side side)
    {
        panels.resize (std::min (panels.size(), places.size()));
        for (size_t seat = 0; seat < places.size(); ++seat)
        {
            if (seat == panels.size())
            {
                panels.push_back (
                    std::make_unique<DeckContainerPanel> (engine, deck(), side, static_cast<int> (seat)));
                addAndMakeVisible (*panels.back());
            }
            panels[seat]->setBounds (places[seat]);
        }
    };
    fill (leftPanels, areas.leftPanels, DeckContainerPanel::Side::left);
    fill (rightPanels, areas.rightPanels, DeckContainerPanel::Side::right);
    waveform.setBounds (areas.waveform);
    thumbnail.setBounds (areas.thumbnail);
    gridSign.setBounds (areas.gridSign);
}

void DeckComponent::pollMoving()
{
    pollControls();
    updateTexts();
}

void DeckComponent::pollCalm()
{
    makePanels();
    notation = KeyText::notationOf (preferences.get (KeyText::preference));
    if (const auto isDoubtful = watch->grid.isDoubtful(); isDoubtful != gridSign.isVisible())
    {
        gridSign.setVisible (isDoubtful);
        repaint (layout().title); // which gives way to it
    }
    if (messageEnds.has_value() && engine.environment.clock() >= *messageEnds && watch->loadedFrames > 0)
        clearMessage();
    updateNotice();
}

void DeckComponent::showMessage (const juce::String& text)
{
    message = juce::StringArray::fromTokens (text, "|", {});
    messageEnds = engine.environment.clock() + messageMs;
    updateNotice();
}

void DeckComponent::clearMessage()
{
    message.clear();
    messageEnds.reset();
    updateNotice();
}

void DeckComponent::updateNotice()
{
    auto next = message;
    if (next.isEmpty() && watch->loadedFrames == 0 && !watch->loading)
        next = { tr ("Drop a track here,"), tr ("or press %1 to load", keyNameOf (KeyAction::load, deck())) };
    if (next == shownNotice)
        return;
    shownNotice = next;
    waveform.setNotice (shownNotice);
}

void DeckComponent::updateTexts()
{
    const Texts next { watch->title.isEmpty() ? PanelPaint::dash() : watch->title, watch->artist,
                       watch->album, tempoText(), KeyText::of (watch->key, notation) };
    if (next == shown)
        return;
    shown = next;
    const auto areas = layout();
    for (const auto& area : { areas.title, areas.artist, areas.tempo })
        repaint (area);
}

bool DeckComponent::hasTempoPanel() const
{
    const auto isTempo = [] (const auto& panel) { return panel->shownPanel() == UtilityPanels::tempo; };
    return std::any_of (leftPanels.begin(), leftPanels.end(), isTempo)
           || std::any_of (rightPanels.begin(), rightPanels.end(), isTempo);
}

juce::String DeckComponent::tempoText() const
{
    const auto own = PanelPaint::bpm (watch->grid, watch->grid.bpm),
               heard = PanelPaint::bpm (watch->grid, watch->bpm());
    if (!watch->grid.isKnown())
        return own;
    if (hasTempoPanel())
        return tr ("TRACK %1", own);
    return heard == own ? heard : heard + "  (" + own + ")";
}

/** The strip's ground lies behind a waveform that is painted anew 25 times a second, so it is put together once. */
void DeckComponent::paintGround (juce::Graphics& g)
{
    const auto scale = skin::scaleOf (g);
    const auto size = (getLocalBounds().toFloat() * scale).getSmallestIntegerContainer();
    if (ground.getBounds() != size)
    {
        ground = juce::Image (juce::Image::RGB, size.getWidth(), size.getHeight(), false,
                              juce::SoftwareImageType());
        juce::Graphics into (ground);
        into.fillAll (palette::ground);
        into.addTransform (juce::AffineTransform::scale (scale));
        const auto strip = skin::strip ("deck_strip", scale);
        strip.drawWide (into, getLocalBounds(), 0, strip.width / 3);
        skin::strip ("deck_column", scale).draw (into, layout().transport, 0);
    }
    const juce::Graphics::ScopedSaveState state (g);
    g.addTransform (juce::AffineTransform::scale (1.0f / scale));
    g.setImageResamplingQuality (juce::Graphics::lowResamplingQuality);
    g.setOpacity (1.0f);
    g.drawImageAt (ground, 0, 0);
}

void DeckComponent::paint (juce::Graphics& g)
{
    paintGround (g);

    // A line parts the waveform from its neighbour on a side without panels.
    g.setColour (palette::edgeDark);
    const auto wave = waveform.getBounds();
    if (leftPanels.empty())
        g.fillRect (wave.getX() - 1, 0, 1, DeckLayout::upperHeight - 1);
    if (rightPanels.empty())
        g.fillRect (wave.getRight() - 1, 0, 1, DeckLayout::upperHeight - 1);
    ControlPanel::paint (g);
    paintTexts (g);
}

void DeckComponent::paintTexts (juce::Graphics& g) const
{
    auto areas = layout();
    const auto left = juce::Justification::centredLeft, right = juce::Justification::centredRight;
    // The key stands at the end of the line that it shares.
    auto& line = areas.artist.isEmpty() ? areas.title : areas.artist;
    if (areas.artist.isEmpty() && gridSign.isVisible())
        line.setRight (std::min (line.getRight(), areas.gridSign.getX()));
    if (shown.key.isNotEmpty())
    {
        PanelPaint::value (g, shown.key, line.removeFromRight (keyWidth), right);
        line.removeFromRight (keyGap);
    }
    if (areas.artist.isEmpty())
    {
        const auto both = shown.artist.isEmpty() ? shown.title : shown.title + "  -  " + shown.artist;
        PanelPaint::value (g, both, areas.title, left);
        PanelPaint::value (g, shown.tempo, areas.tempo, right);
        return;
    }
    PanelPaint::value (g, shown.title, areas.title, left, SMLookAndFeel::titleSize);
    PanelPaint::value (g, shown.tempo, areas.tempo, right,
                       hasTempoPanel() ? SMLookAndFeel::valueSize : SMLookAndFeel::titleSize);
    g.setColour (palette::label);
    g.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
    juce::StringArray credits { shown.artist, shown.album };
    credits.removeEmptyStrings();
    g.drawText (credits.joinIntoString ("  -  "), areas.artist, left, true);
}

void DeckComponent::paintOverChildren (juce::Graphics& g)
{
    if (touched)
    {
        g.setColour (palette::accent);
        g.fillRect (touchedArea);
    }
    if (!drop.has_value())
        return;
    using enum TrackLoad::Consent;
    const auto colour = *drop == given ? palette::accent : palette::danger;
    const auto letter = PanelPaint::letterOf (deck());
    const auto text = *drop == given     ? tr ("LOAD ONTO DECK %1", letter)
                      : *drop == refused ? tr ("DECK %1 PLAYS: LOCKED", letter)
                                         : tr ("DECK %1 PLAYS: ASKS FIRST. SHIFT: AT ONCE", letter);
    g.setColour (colour);
    g.drawRect (getLocalBounds(), 2);
    const auto area = getLocalBounds().removeFromBottom (dropTextHeight);
    g.fillRect (area);
    g.setColour (palette::textOn (colour));
    g.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
    g.drawFittedText (text, area.reduced (4, 0), juce::Justification::centred, 1, 0.7f);
}

void DeckComponent::setTouched (bool isTouched)
{
    if (std::exchange (touched, isTouched) != isTouched)
        repaint (touchedArea);
}

void DeckComponent::mouseDown (const juce::MouseEvent& event)
{
    if (event.mods.isPopupMenu() && layout().transport.contains (event.getPosition()))
        openMenu();
}

bool DeckComponent::isInterestedInFileDrag (const juce::StringArray& files)
{
    return std::any_of (files.begin(), files.end(),
                        [] (const auto& path) { return AudioFileTypes::matches (juce::File (path)); });
}

void DeckComponent::filesDropped (const juce::StringArray& files, int, int)
{
    followDrop (false);
    juce::Array<juce::File> tracks;
    for (const auto& path : files)
        tracks.add (juce::File (path));
    loader.load (tracks, deck(), *this, isShiftHeld());
}

juce::Array<juce::File> DeckComponent::tracksOf (const SourceDetails& details) const
{
    juce::Array<juce::File> tracks;
    for (const auto& path : DragSourceName::filesOf (details))
        if (const juce::File file (path); AudioFileTypes::matches (file))
            tracks.add (file);
    if (details.description.toString() == DeckWaveform::dragDescription && details.sourceComponent != nullptr)
        if (const auto* source = details.sourceComponent->findParentComponentOfClass<DeckComponent>();
            source != nullptr && source != this && source->watch->loadedFrames > 0)
            tracks.add (juce::File (source->watch->filePath));
    return tracks;
}

bool DeckComponent::isInterestedInDragSource (const SourceDetails& details)
{
    return !tracksOf (details).isEmpty();
}

void DeckComponent::itemDropped (const SourceDetails& details)
{
    followDrop (false);
    loader.load (tracksOf (details), deck(), *this, isShiftHeld());
}

void DeckComponent::followDrop (bool isOver)
{
    std::optional<TrackLoad::Consent> next;
    if (isOver)
        next = TrackLoad::consentOf (engine, watch, isShiftHeld());
    if (std::exchange (drop, next) != next)
        repaint();
}

void DeckComponent::openMenu()
{
    juce::PopupMenu menu;
    const auto hasTrack = watch->loadedFrames > 0;
    menu.addItem (tr ("Load a track..."), [this] { loader.open (deck(), *this); });
    menu.addItem (tr ("Return to the start"), hasTrack, false, [this] { engine.transport.rewind (deck()); });
    menu.addItem (tr ("Play in reverse"), hasTrack, watch->reverse,
                  [this] { engine.transport.setReverse (deck(), !watch.look().reverse); });
    menu.addSeparator();
    EditMenu::addTo (menu, engine, watch);
    ::openMenu (menu, *this, juce::PopupMenu::Options().withTargetComponent (loadButton));
}

#include "ui/header/HeaderPanels.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/layout/DeckLayout.h"
#include "ui/look/OpenMenu.h"
#include "ui/look/TimeText.h"
#include "ui/panel/PanelPaint.h"
#include "ui/widgets/PXImageLevelMeter.h"

#include <array>

namespace
{
using Kind = ControlSpec::Kind;
using Lit = ControlSpec::Lit;

constexpr int firstButton = 4, buttonTop = 8, buttonSize = 32, buttonStep = 36, timeWidth = 52;
constexpr std::array scales { 100, 125, 150, 175, 200 };

// clang-format off
constexpr PlacedControl buttonTable[] {
    { { Kind::sign, "_recButton",  "DISK_RECORDER", "rec_32", N_ ("Disk recorder. Bounce your mix to WAV files in realtime. Check preferences dialog box to select WAV save path.") }, { 0, buttonTop, buttonSize, buttonSize } },
    { { Kind::sign, "_snapButton", "SNAP",          "snap_32", N_ ("Snap and quantise of all decks.\nSnap: cues and loops are set on the nearest beat.\nQuantise: jumps keep the beat.") }, { buttonStep, buttonTop, buttonSize, buttonSize } },
};

constexpr PlacedControl levelTable[] {
    { { Kind::text, "_automixButton",       "AUTOMIX_ON_OFF",      N_ ("AUTO"), N_ ("Automix: plays the list in the browser, mixing each track into the next") }, {   0, 12, 44, 24 } },
    { { Kind::text, "_monitorSplitButton",  "MONITOR_PHONE_SPLIT", N_ ("SPLIT"), N_ ("Headphones split: cue on the left, master on the right") }, {  56, 12, 48, 24 } },
    { { Kind::text, "_monitorDriveButton",  "MONITOR_OVERDRIVE",   N_ ("DRIVE"), N_ ("Headphones boost: louder, softly limited") }, { 108, 12, 48, 24 } },
    { { Kind::knob, "_monitorVolumeSlider", "MONITOR_VOLUME",      N_ ("PHONES"), N_ ("Monitor volume level") }, { 168,  4, 28, 40 } },
    { { Kind::knob, "_monitorMixSlider",    "MONITOR_MIX",         N_ ("MIX"), N_ ("An independent monitor fader that blends between Main and PFL on the phones") }, { 212,  4, 28, 40 } },
    { { Kind::knob, "_masterVolumeSlider",  "MASTER_VOLUME",       N_ ("MASTER"), N_ ("Master volume level") }, { 256,  4, 28, 40 } },
};
// clang-format on

const juce::Rectangle<int> meterArea { 296, 16, 86, 16 };
const std::array<juce::Rectangle<int>, 2> clipLamps { juce::Rectangle<int> { 384, 16, 5, 7 },
                                                      { 384, 25, 5, 7 } };
}

HeaderButtons::HeaderButtons (CPlatterdex& e, HeaderActions a)
    : ControlPanel (e),
      actions (std::move (a)),
      decks (addButton ("_decksSelectButton", "decks_32", firstButton, tr ("Selects 2 or 4 deck mode."))),
      preferences (addButton ("_preferencesButton", "preferences_32", firstButton + buttonStep,
                              tr ("Opens preferences dialog box. Right click for the menu.")))
{
    decks.onClick = [this] { toggle (EditorPreference::fourDeckMode); };
    preferences.onClick = [this]
    {
        if (actions.preferences != nullptr)
            actions.preferences();
        else
            openMenuOfPreferences();
    };
    preferences.onRightClick = [this] { openMenuOfPreferences(); };
    auto next = firstButton + 2 * buttonStep;
    if (actions.showWaves != nullptr)
    {
        waves =
            &addButton ("_wavesButton", "waves_32", next,
                        tr ("Stacked waves: the loaded decks, large and one below the other in time, in a "
                            "window with room for them. The wheel zooms."));
        waves->onClick = [this] { actions.showWaves (!actions.showsWaves()); };
        next += buttonStep;
    }
    if (actions.setFullScreen != nullptr)
    {
        fullscreen = &addButton ("_fullscreenButton", "fullscreen_32", next,
                                 tr ("Enables/Disables full screen mode."));
        fullscreen->onClick = [this] { actions.setFullScreen (!actions.isFullScreen()); };
        next += buttonStep;
    }
    addControls (buttonTable, -1, { next, 0 });
    timeArea = { next + 2 * buttonStep, buttonTop + 4, timeWidth, 24 };
}

PXImageButton& HeaderButtons::addButton (const char* name, const char* strip, int x, const juce::String& tip)
{
    auto& button = own (std::make_unique<PXImageButton> (name));
    button.setStrip (strip);
    button.setTooltip (tip);
    button.setBounds (x, buttonTop, buttonSize, buttonSize);
    return button;
}

void HeaderButtons::toggle (EditorPreference which)
{
    auto& flag = engine.settings.editor[which];
    flag = flag == 0 ? 1 : 0;
    if (actions.layoutChanged != nullptr)
        actions.layoutChanged();
    refresh();
}

juce::PopupMenu HeaderButtons::preferencesMenu()
{
    juce::PopupMenu menu;
    if (actions.audioSettings != nullptr)
        menu.addItem (tr ("Audio settings..."), actions.audioSettings);
    for (const auto& page : actions.pages)
        if (page.open != nullptr)
            menu.addItem (tr (page.title) + "...", page.open);
    if (actions.showParameters != nullptr)
        menu.addItem (tr ("All parameters") + "...", actions.showParameters);
    menu.addSeparator();

    if (actions.setScale != nullptr)
    {
        juce::PopupMenu sizes;
        for (const auto percent : scales)
            sizes.addItem (juce::String (percent) + " %", true, actions.scale() == percent,
                           [this, percent] { actions.setScale (percent); });
        menu.addSubMenu (tr ("Interface size"), sizes);
    }
    const auto panels = [this] (EditorPreference which)
    {
        juce::PopupMenu counts;
        for (int count = 0; count <= DeckLayout::mostPanels; ++count)
            counts.addItem (juce::String (count), true, engine.settings.editor[which] == count,
                            [this, which, count]
                            {
                                engine.settings.editor[which] = static_cast<int8_t> (count);
                                actions.layoutChanged();
                            });
        return counts;
    };
    menu.addSubMenu (tr ("Panels left of the waveform"), panels (EditorPreference::deckPanelsLeft));
    menu.addSubMenu (tr ("Panels right of the waveform"), panels (EditorPreference::deckPanelsRight));

    const auto flag = [this, &menu] (const juce::String& text, EditorPreference which)
    { menu.addItem (text, true, engine.settings.editor[which] != 0, [this, which] { toggle (which); }); };
    flag (tr ("Ghost mixer"), EditorPreference::showGhostMixer);
    flag (tr ("Mixer channels in the order A B C D"), EditorPreference::mixerOrderABCD);
    flag (tr ("Coloured waveform"), EditorPreference::spectralWaveform);
    flag (tr ("Tooltips"), EditorPreference::showTooltips);
    if (actions.showBrowser != nullptr)
        menu.addItem (tr ("Browser"), true, actions.showsBrowser(),
                      [this] { actions.showBrowser (!actions.showsBrowser()); });
    return menu;
}

void HeaderButtons::openMenuOfPreferences()
{
    auto menu = preferencesMenu();
    openMenu (menu, *this, juce::PopupMenu::Options().withTargetComponent (preferences));
}

void HeaderButtons::pollMoving()
{
    pollControls();
    decks.setToggleState (engine.settings.editor[EditorPreference::fourDeckMode] != 0);
    if (waves != nullptr)
        waves->setToggleState (actions.showsWaves());
    if (fullscreen != nullptr)
        fullscreen->setToggleState (actions.isFullScreen());

    const auto rate = engine.decks.engineRate.get();
    juce::String time;
    if (engine.recorder.isRecording() && rate > 0.0)
        time = timeText (static_cast<double> (engine.recorder.recordedFrames) / rate);
    if (time == shownTime)
        return;
    shownTime = time;
    repaint (timeArea);
}

void HeaderButtons::paint (juce::Graphics& g)
{
    ControlPanel::paint (g);
    if (getLocalBounds().contains (timeArea)) // else it stands in the line of news alone
        PanelPaint::value (g, shownTime, timeArea, juce::Justification::centredLeft);
}

HeaderLevels::HeaderLevels (CPlatterdex& e) : ControlPanel (e)
{
    addControls (levelTable, -1);
    auto& meter = own (std::make_unique<PXImageHorizontalLevelMeter>());
    meter.setImages ("meter_level");
    meter.bind (e, CommandTable::numberOf ("MASTER_LEVEL_1"), CommandTable::numberOf ("MASTER_LEVEL_2"));
    meter.setBounds (meterArea);
}

void HeaderLevels::pollMoving()
{
    pollControls();
    const std::array next { engine.masterMeters.hasClipped (0), engine.masterMeters.hasClipped (1) };
    if (std::exchange (clipped, next) == next)
        return;
    for (const auto& lamp : clipLamps)
        repaint (lamp);
}

void HeaderLevels::paint (juce::Graphics& g)
{
    ControlPanel::paint (g);
    for (size_t side = 0; side < clipLamps.size(); ++side)
    {
        g.setColour (clipped[side] ? palette::danger : palette::well);
        g.fillRect (clipLamps[side]);
    }
}

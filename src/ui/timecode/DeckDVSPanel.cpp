#include "ui/timecode/DeckDVSPanel.h"

#include "engine/CPlatterdex.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/look/ShortText.h"
#include "ui/panel/PanelPaint.h"
#include "ui/timecode/TimecodePreferencesPage.h"
#include "ui/timecode/TimecodeWords.h"

namespace
{
using Kind = ControlSpec::Kind;
using Lit = ControlSpec::Lit;

constexpr int margin = 4, width = 92, half = 44, right = 52;
constexpr const char* internalTip =
    N_ ("In internal tracking mode the Vinyl/CDJ external timecode control is disabled.");

// clang-format off
constexpr PlacedControl table[] {
    { { Kind::text, "_absoluteButton", "DVS_ABSOLUTE_MODE_", N_ ("Absolute"), N_ ("The record moves the deck, and the needle's place is the track's place."), Lit::deck }, { margin,  0, width, 24 } },
    { { Kind::text, "_relativeButton", "DVS_RELATIVE_MODE_", N_ ("Relative"), N_ ("The record moves the deck, wherever the needle lies."), Lit::deck }, { margin, 26, width, 24 } },
    { { Kind::text, "_internalButton", "DVS_INTERNAL_MODE_", N_ ("Internal"), internalTip, Lit::deck }, { margin, 52, width, 24 } },
};
// clang-format on

const juce::Rectangle<int> thruArea { margin, 78, half, 24 }, pageArea { right, 78, half, 24 },
    qualityArea { margin, 104, width, 14 }, wordsArea { margin, 118, width, 44 },
    foundArea { margin, 138, width, 24 };
}

DeckDVSPanel::DeckDVSPanel (CPlatterdex& e, int d)
    : ControlPanel (e),
      deck (d),
      thru (own (std::make_unique<PXTextButton> (tr ("Thru")))),
      page (own (std::make_unique<PXTextButton> (tr ("Setup")))),
      found (own (std::make_unique<PXTextButton> (tr ("Found"))))
{
    addControls (table, deck);
    auto& timecode = engine.timecodes[static_cast<size_t> (deck)];
    timecode.addWatcher();
    thru.setComponentID ("_thruButton");
    thru.setTooltip (
        tr ("Plays the input itself through the deck's channel: for a real record in the same set."));
    thru.setDeckHue (deck);
    thru.setTriggeredOnMouseDown (true);
    thru.onClick = [this, &timecode]
    {
        timecode.setThru (!timecode.isThru());
        refresh();
    };
    thru.setBounds (thruArea);
    page.setComponentID ("_timecodeSetupButton");
    page.setTooltip (tr ("Opens the page of timecode: inputs, records, gain and the picture of the signal."));
    page.onClick = [this] { openPage(); };
    page.setBounds (pageArea);
    found.setComponentID ("_foundButton");
    found.setTooltip (tr ("Follows the record that was recognised."));
    found.onClick = [this, &timecode]
    {
        if (foundBrand >= 0)
            timecode.setBrand (foundBrand);
        refresh();
    };
    found.setBounds (foundArea);
    found.setVisible (false);
}

DeckDVSPanel::~DeckDVSPanel()
{
    engine.timecodes[static_cast<size_t> (deck)].removeWatcher();
}

void DeckDVSPanel::openPage()
{
    if (auto* windows = ToolWindows::of (*this))
        TimecodePreferencesPage::open (*windows, *this, engine);
}

void DeckDVSPanel::pollMoving()
{
    pollControls();
    const auto& timecode = engine.timecodes[static_cast<size_t> (deck)];
    engine.timecodeListener.listen (deck);
    const auto picture = engine.timecodeListener.picture (deck);
    const auto status = timecode.status();
    thru.setToggleState (timecode.isThru(), juce::dontSendNotification);

    foundBrand = picture.foundBrand;
    found.setVisible (foundBrand >= 0);
    if (foundBrand >= 0)
        found.setButtonText (shortText (TimecodeWords::found (foundBrand), SMLookAndFeel::buttonFont (24),
                                        found.textArea().getWidth()));

    const auto nextQuality = TimecodeWords::quality (status, picture.input);
    const auto next = TimecodeWords::diagnosis (status, picture.input);
    if (next == shown && nextQuality == quality)
        return;
    shown = next;
    quality = nextQuality;
    repaint (qualityArea.getUnion (wordsArea));
}

void DeckDVSPanel::paint (juce::Graphics& g)
{
    ControlPanel::paint (g);
    PanelPaint::label (g, tr ("QUALITY"), qualityArea, juce::Justification::centredLeft);
    PanelPaint::value (g, quality, qualityArea, juce::Justification::centredRight);
    if (foundBrand >= 0)
        return;
    g.setColour (palette::value);
    g.setFont (SMLookAndFeel::labelFont());
    g.drawFittedText (shown, wordsArea, juce::Justification::topLeft, 3, 1.0f);
}

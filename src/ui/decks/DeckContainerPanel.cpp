#include "ui/decks/DeckContainerPanel.h"

#include "engine/CPlatterdex.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/decks/UtilityPanels.h"

namespace
{
constexpr int margin = 4, titleHeight = 20;

constexpr const char* tooltip = N_ (
    "Select one of the advanced utility panels: loops, hot cues, beatgrid, dvs, key, smart knob, tempo or "
    "empty panel. "
    "You can change the number of visible panels in the menu of the preferences button.");
}

DeckContainerPanel::DeckContainerPanel (CPlatterdex& e, int deck, Side s, int seatIndex)
    : PollingView (Pace::calm),
      engine (e),
      deckIndex (deck),
      side (s),
      seat (seatIndex)
{
    setOpaque (true);
    title.setComponentID ("_panelComboBox");
    title.setTooltip (tr (tooltip));
    title.onFillMenu = [this] (juce::PopupMenu& menu)
    {
        for (int index = 0; index < UtilityPanels::count; ++index)
            if (UtilityPanels::isOffered (index))
                menu.addItem (index + 1, tr (UtilityPanels::names[static_cast<size_t> (index)]), true,
                              index == shown);
    };
    title.onMenuChoice = [this] (int id) { choose (id - 1); };
    addAndMakeVisible (title);
    pollCalm();
}

Relaxed<int8_t>& DeckContainerPanel::choice() const
{
    auto& setup = engine.settings.deckSetup[static_cast<size_t> (deckIndex)];
    return (side == Side::left ? setup.panelsLeft : setup.panelsRight)[static_cast<size_t> (seat)];
}

void DeckContainerPanel::choose (int index)
{
    choice() = static_cast<int8_t> (index);
    pollCalm();
}

void DeckContainerPanel::pollCalm()
{
    const int wanted = choice();
    const auto next = UtilityPanels::isOffered (wanted) ? wanted : static_cast<int> (UtilityPanels::empty);
    if (next == shown)
        return;
    shown = next;
    title.setButtonText (tr (UtilityPanels::names[static_cast<size_t> (shown)]));
    content = UtilityPanels::make (shown, engine, deckIndex);
    if (content != nullptr)
        addAndMakeVisible (*content);
    resized();
    repaint();
}

void DeckContainerPanel::resized()
{
    auto area = getLocalBounds();
    title.setBounds (
        area.removeFromTop (contentTop).reduced (margin, 0).withTrimmedTop (2).withHeight (titleHeight));
    if (content != nullptr)
        content->setBounds (area);
}

void DeckContainerPanel::paint (juce::Graphics& g)
{
    g.setColour (palette::panel);
    g.fillRect (getLocalBounds());
    // The line between two panels stands where the next one begins.
    g.setColour (palette::edgeDark);
    g.fillRect (side == Side::left ? getWidth() - 1 : 0, 0, 1, getHeight() - 1);
}

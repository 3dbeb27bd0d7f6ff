#include "ui/decks/UtilityPanels.h"

#include "engine/CommandTable.h"
#include "settings/EngineSettings.h"
#include "ui/decks/DeckPanels.h"
#include "ui/decks/DeckTempoPanel.h"
#include "ui/smartknob/DeckSmartKnobPanel.h"
#include "ui/timecode/DeckDVSPanel.h"

namespace UtilityPanels
{
bool isOffered (int index)
{
    switch (index)
    {
    case loop:
        return !CommandTable::isUnbuilt (CommandTable::numberOf ("LOOP_A"));
    case cue:
    case grid:
    case dvs:
    case key:
    case smartKnob:
    case tempo:
    case empty:
        return true;
    default:
        return false;
    }
}

void layOutForNewUser (EngineSettings& settings)
{
    settings.editor[EditorPreference::deckPanelsLeft] = settings.editor[EditorPreference::deckPanelsRight] =
        2;
    for (auto& setup : settings.deckSetup)
    {
        setup.panelsLeft[0] = loop;
        setup.panelsLeft[1] = grid;
        setup.panelsRight[0] = tempo;
        setup.panelsRight[1] = cue;
    }
}

std::unique_ptr<juce::Component> make (int index, CPlatterdex& engine, int deck)
{
    if (!isOffered (index))
        return nullptr;
    switch (index)
    {
    case loop:
        return std::make_unique<DeckLoopPanel> (engine, deck);
    case cue:
        return std::make_unique<DeckCuePanel> (engine, deck);
    case grid:
        return std::make_unique<DeckGridPanel> (engine, deck);
    case dvs:
        return std::make_unique<DeckDVSPanel> (engine, deck);
    case key:
        return std::make_unique<DeckKeyPanel> (engine, deck);
    case smartKnob:
        return std::make_unique<DeckSmartKnobPanel> (engine, deck);
    case tempo:
        return std::make_unique<DeckTempoPanel> (engine, deck);
    default:
        return nullptr;
    }
}
}

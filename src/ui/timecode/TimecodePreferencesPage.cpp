#include "ui/timecode/TimecodePreferencesPage.h"

#include "engine/CPlatterdex.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"

namespace
{
constexpr const char* title = N_ ("Timecode");
constexpr int gap = 8;
}

TimecodePreferencesPage::TimecodePreferencesPage (CPlatterdex& e, int columns) : engine (e)
{
    for (int index = 0; index < deckCount; ++index)
    {
        auto& made = decks[static_cast<size_t> (index)];
        made = std::make_unique<TimecodeDeckComponent> (engine, index);
        made->setTopLeftPosition (gap + index % columns * (TimecodeDeckComponent::width + gap),
                                  gap + index / columns * (TimecodeDeckComponent::height + gap));
        addAndMakeVisible (*made);
    }
    setSize (gap + columns * (TimecodeDeckComponent::width + gap),
             gap + deckCount / columns * (TimecodeDeckComponent::height + gap));
}

void TimecodePreferencesPage::restoreDefaults()
{
    for (auto& each : decks)
        each->restoreDefaults();
}

void TimecodePreferencesPage::open (ToolWindows& windows, juce::Component& opener, CPlatterdex& engine)
{
    windows.open (tr (title), opener,
                  [&engine] (const auto&) { return std::make_unique<TimecodePreferencesPage> (engine); });
}

void TimecodePreferencesPage::paint (juce::Graphics& g)
{
    g.fillAll (palette::ground);
}

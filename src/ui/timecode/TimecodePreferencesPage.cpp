#include "ui/timecode/TimecodePreferencesPage.h"

#include "engine/CPlatterdex.h"
#include "skin/Palette.h"

namespace
{
constexpr const char* title = "Timecode";
constexpr int gap = 8, foot = 40;
constexpr int width = 2 * TimecodeDeckComponent::width + 3 * gap,
              height = 2 * TimecodeDeckComponent::height + 2 * gap + foot;
}

TimecodePreferencesPage::TimecodePreferencesPage (CPlatterdex& e) : engine (e)
{
    for (int index = 0; index < deckCount; ++index)
    {
        auto& made = decks[static_cast<size_t> (index)];
        made = std::make_unique<TimecodeDeckComponent> (engine, index);
        made->setTopLeftPosition (gap + index % 2 * (TimecodeDeckComponent::width + gap),
                                  gap + index / 2 * (TimecodeDeckComponent::height + gap));
        addAndMakeVisible (*made);
    }
    defaults.setComponentID ("_defaultSettingsButton");
    defaults.setTooltip ("Puts the settings of this page back as they were at first.");
    defaults.setBounds (gap, height - 32, 130, 24);
    defaults.onClick = [this]
    {
        if (engine.environment.prompts == nullptr)
            return;
        engine.environment.prompts->askYesNo (
            "Confirm Restore",
            "Are you sure you want to restore default settings for the selected preferences page?",
            [here = SafePointer (this)] (bool yes)
            {
                if (yes && here != nullptr)
                    for (auto& each : here->decks)
                        each->restoreDefaults();
            });
    };
    addAndMakeVisible (defaults);
    setSize (width, height);
}

void TimecodePreferencesPage::open (ToolWindows& windows, juce::Component& opener, CPlatterdex& engine)
{
    windows.open (title, opener,
                  [&engine] (const auto&) { return std::make_unique<TimecodePreferencesPage> (engine); });
}

void TimecodePreferencesPage::paint (juce::Graphics& g)
{
    g.fillAll (palette::ground);
}

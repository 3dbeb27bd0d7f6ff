#pragma once

#include "ui/timecode/TimecodeDeckComponent.h"
#include "ui/window/RestorablePage.h"
#include "ui/window/ToolWindows.h"

/** The page of the four decks' control records. */
class TimecodePreferencesPage : public juce::Component, public RestorablePage
{
public:
    /** @param columns   1 or 2, of the four decks */
    explicit TimecodePreferencesPage (CPlatterdex&, int columns = 2);

    static void open (ToolWindows&, juce::Component& opener, CPlatterdex&);

    TimecodeDeckComponent& deck (int index) { return *decks[static_cast<size_t> (index)]; }

    void restoreDefaults() override;
    void paint (juce::Graphics&) override;

private:
    CPlatterdex& engine;
    std::array<std::unique_ptr<TimecodeDeckComponent>, deckCount> decks;
};

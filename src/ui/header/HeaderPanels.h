#pragma once

#include "settings/EngineSettings.h"
#include "ui/header/HeaderActions.h"
#include "ui/panel/ControlPanel.h"
#include "ui/widgets/PXImageButton.h"

#include <array>

/** The header's buttons: decks, preferences, stacked waves, full screen, recorder and snap. */
class HeaderButtons : public ControlPanel
{
public:
    static constexpr int width = 272; ///< less where the block in the middle needs it, down to 220

    HeaderButtons (CPlatterdex&, HeaderActions);

    /** Minutes, seconds and tenths of the recording that runs, or nothing. */
    const juce::String& recordedTime() const noexcept { return shownTime; }

    /** The menu behind the preferences button. */
    juce::PopupMenu preferencesMenu();

    void paint (juce::Graphics&) override;

private:
    void pollMoving() override;
    PXImageButton& addButton (const char* name, const char* strip, int x, const juce::String& tip);
    void openMenuOfPreferences();
    void toggle (EditorPreference);

    const HeaderActions actions;
    PXImageButton &decks, &preferences;
    PXImageButton *waves = nullptr, *fullscreen = nullptr; ///< the latter only where the window is ours
    juce::Rectangle<int> timeArea;
    juce::String shownTime;
};

/** The header's levels: headphones, master and its meter, with a lamp for each side that stays red after full scale. */
class HeaderLevels : public ControlPanel
{
public:
    static constexpr int width = 393;

    explicit HeaderLevels (CPlatterdex&);

    void paint (juce::Graphics&) override;

private:
    void pollMoving() override;

    std::array<bool, 2> clipped {};
};

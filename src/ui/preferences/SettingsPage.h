#pragma once

#include "settings/SettingNames.h"
#include "ui/preferences/RowGroupsPage.h"
#include "ui/window/RestorablePage.h"

class CPlatterdex;

/** A control of a page of the preferences, as the pages' tables write it. */
struct SettingControl
{
    enum class Kind
    {
        toggle,
        inverted, ///< a switch whose on stands for 0
        choice,
        seconds, ///< a slider
        percent, ///< a slider on a linear value
        folder,
        file ///< whose pattern is the first entry, and the dialog's title the second
    };

    Kind kind;
    const char* text;
    const char* setting; ///< by its name; of a deck's, without the deck
    std::span<const char* const> entries = {};
    double first = 0.0; ///< of a choice: the value of its first entry, each next one adds 1
};

/** A page of settings, made from tables. Each change acts at once. Message thread. */
class SettingsPage : public RowGroupsPage, public RestorablePage
{
public:
    /** @param changed   called after each change; the layout may depend on it */
    SettingsPage (CPlatterdex&, std::function<void()> changed);

    void restoreDefaults() override;

    /** The settings that have a control here. */
    const std::vector<NamedSetting>& settings() const noexcept { return bound; }

protected:
    using RowGroupsPage::addGroup;
    using RowGroupsPage::addRow;

    /** Begins a group with the rows of a table. @param deck   0 to 3, for a table of deck's settings */
    void addGroup (const juce::String& title, std::span<const SettingControl>, int deck = -1);

    CPlatterdex& engine;

private:
    void addRow (const SettingControl&, int deck);
    std::unique_ptr<SettingRow> makeRow (const SettingControl&, NamedSetting);

    const std::function<void()> changed;
    std::vector<NamedSetting> bound;
};

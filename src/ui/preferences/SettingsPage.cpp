#include "ui/preferences/SettingsPage.h"

#include "engine/CPlatterdex.h"
#include "engine/SettingChange.h"
#include "support/language/Translate.h"
#include "ui/look/FolderQuestion.h"

namespace
{
juce::String tipOf (const SettingName& row)
{
    const juce::String meaning = tr (juce::String (row.meaning.data(), row.meaning.size()));
    return meaning.substring (0, 1).toUpperCase() + meaning.substring (1) + ".";
}
}

SettingsPage::SettingsPage (CPlatterdex& e, std::function<void()> c) : engine (e), changed (std::move (c)) {}

void SettingsPage::addGroup (const juce::String& title, std::span<const SettingControl> controls, int deck)
{
    addGroup (title);
    for (const auto& control : controls)
        addRow (control, deck);
}

void SettingsPage::addRow (const SettingControl& control, int deck)
{
    auto name = std::string (control.setting);
    if (deck >= 0)
        name += std::string ("_") + static_cast<char> ('A' + deck);
    const auto setting = NamedSetting::find (name);
    jassert (setting.row != nullptr);
    bound.push_back (setting);
    auto row = makeRow (control, setting);
    row->setComponentID (setting.fullName());
    addRow (std::move (row));
}

std::unique_ptr<SettingRow> SettingsPage::makeRow (const SettingControl& control, NamedSetting setting)
{
    using Kind = SettingControl::Kind;
    const auto text = tr (control.text);
    const auto tip = tipOf (*setting.row);
    if (setting.row->isText())
    {
        const auto question = [this, setting, control]
        {
            const juce::File now (setting.valueIn (engine.settings));
            if (control.kind == Kind::folder)
                return FolderQuestion::make (tr ("Choose a directory..."), now);
            return Prompts::FileQuestion { tr (control.entries[1]), now, control.entries[0],
                                           control.setting == std::string_view ("recordFile") };
        };
        return SettingRows::path (text, tip,
                                  { [this, setting] { return setting.valueIn (engine.settings); },
                                    [this, setting] (const juce::String& path)
                                    {
                                        changeSetting (engine, setting, path);
                                        changed();
                                    },
                                    [this, question] (std::function<void (const juce::File&)> chosen)
                                    {
                                        if (engine.environment.prompts != nullptr)
                                            engine.environment.prompts->askFile (question(),
                                                                                 std::move (chosen));
                                    } });
    }
    const auto& row = *setting.row;
    SettingValue value { [this, setting] { return setting.row->read (engine.settings, setting.deck); },
                         [this, setting] (double next)
                         {
                             changeSetting (engine, setting, next);
                             changed();
                         },
                         row.read (defaultSettings (engine.environment.folders), setting.deck) };
    const juce::Range<double> range { row.lowest, row.highest };
    switch (control.kind)
    {
    case Kind::choice:
    {
        juce::StringArray entries;
        for (const auto* entry : control.entries)
            entries.add (tr (entry));
        return SettingRows::choice (text, tip, std::move (value), entries, control.first);
    }
    case Kind::seconds:
        return SettingRows::slider (text, tip, std::move (value), range, 1.0, 1.0, "s");
    case Kind::percent:
        return SettingRows::slider (text, tip, std::move (value), range, 0.01, 100.0, "%");
    case Kind::toggle:
    case Kind::inverted:
    case Kind::folder:
    case Kind::file:
        break;
    }
    return SettingRows::toggle (text, tip, std::move (value), control.kind == Kind::inverted);
}

void SettingsPage::restoreDefaults()
{
    for (const auto& setting : bound)
        restoreSetting (engine, setting);
    changed();
    refresh();
}

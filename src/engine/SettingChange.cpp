#include "engine/SettingChange.h"

#include "engine/CPlatterdex.h"

void changeSetting (CPlatterdex& engine, NamedSetting setting, double value)
{
    const auto& row = *setting.row;
    jassert (!row.isText());
    const CallbackLock lock (engine.getCallbackLock(), "setting");
    row.write (engine.settings, setting.deck, std::clamp (value, row.lowest, row.highest));
    if (row.name == "pitchRangeIndex")
        engine.decks.setPitchRange (engine.settings.pitchRangeIndex);
    if (row.name == "crossfader")
        engine.handCrossfader = engine.settings.crossfader.get(); // the place that is kept
}

void changeSetting (CPlatterdex& engine, NamedSetting setting, const juce::String& text)
{
    jassert (setting.row->isText());
    const SettingsText encoded (text);
    const CallbackLock lock (engine.getCallbackLock(), "setting");
    setting.row->textOf (engine.settings) = encoded;
}

void restoreSetting (CPlatterdex& engine, NamedSetting setting)
{
    const auto atFirst = defaultSettings (engine.environment.folders);
    if (setting.row->isText())
        changeSetting (engine, setting, setting.row->text (atFirst).get());
    else
        changeSetting (engine, setting, setting.row->read (atFirst, setting.deck));
}

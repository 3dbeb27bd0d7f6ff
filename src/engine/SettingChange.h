#pragma once

#include "settings/SettingNames.h"

class CPlatterdex;

/** Writes a number into a setting, and the engine acts on it at once. Message thread.
    @param value   is limited to the setting's span */
void changeSetting (CPlatterdex&, NamedSetting, double value);

/** Writes a text into a setting. Message thread. @param text   is cut at 1023 bytes */
void changeSetting (CPlatterdex&, NamedSetting, const juce::String& text);

/** Puts a setting back as it was at first. Message thread. */
void restoreSetting (CPlatterdex&, NamedSetting);

#pragma once

#include "settings/EngineSettings.h"

#include <span>
#include <string_view>

/** The settings by name, as sets of commands write them: a number within a span, or a text. */
struct SettingName
{
    std::string_view name; ///< of a deck's, without the deck: "lineGain" stands for lineGain_A to lineGain_D
    std::string_view meaning; ///< a line for people, with the values that mean something
    double lowest = 0.0, highest = 1.0;
    double (*read) (const EngineSettings&, int deck) = nullptr; ///< null for a text
    void (*write) (EngineSettings&, int deck,
                   double) = nullptr; ///< takes a value within the span; null for a text
    const SettingsText& (*text) (const EngineSettings&) = nullptr; ///< null for a number
    bool isOfDeck = false;

    bool isText() const noexcept { return text != nullptr; }

    /** The text of a block that can be written. */
    SettingsText& textOf (EngineSettings& settings) const
    {
        return const_cast<SettingsText&> (text (settings)); // the block itself is not const
    }

    /** All of them, in the order of the settings' file. */
    static std::span<const SettingName> all() noexcept;
};

/** A setting that a name stands for. */
struct NamedSetting
{
    const SettingName* row = nullptr; ///< null for a name that there is not
    int deck = 0;

    /** @param name   "monitorMix", "lineGain_B" */
    static NamedSetting find (std::string_view name) noexcept;

    /** The setting's value as a set writes it: "0.5", "3", "/home/me/Music". */
    juce::String valueIn (const EngineSettings&) const;

    /** "lineGain_B" */
    juce::String fullName() const;
};

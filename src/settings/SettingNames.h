#pragma once

#include "settings/EngineSettings.h"

#include <span>
#include <string_view>

/** The settings by name, as sets of commands write them: a number within a span, or a text. */
struct SettingName
{
    std::string_view name; ///< of a deck's, without the deck: "lineGain" stands for lineGain_A to lineGain_D
    double lowest = 0.0, highest = 1.0;
    void (*write) (EngineSettings&, int deck, double) = nullptr;        ///< null for a text
    void (*writeText) (EngineSettings&, const juce::String&) = nullptr; ///< null for a number
    bool isOfDeck = false;

    bool isText() const noexcept { return writeText != nullptr; }

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
};

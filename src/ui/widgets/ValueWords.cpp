#include "ui/widgets/ValueWords.h"

#include "ui/look/TimeText.h"
#include "ui/poll/DeckWatch.h"

#include <cmath>

namespace
{
constexpr double unityGain = 0.5, leastTempo = 30.0, semitoneRange = 24.0;

std::optional<double> numberIn (const juce::String& typed)
{
    if (!typed.containsAnyOf ("0123456789"))
        return {};
    return typed.replaceCharacter (',', '.').trim().getDoubleValue();
}

bool endsWith (const juce::String& typed, const char* unit)
{
    return typed.trimEnd().endsWithIgnoreCase (unit);
}
}

ValueWords ValueWords::decibels()
{
    return { [] (double value)
             {
                 return value > 0.0
                            ? juce::String::formatted ("%+.1f dB", 20.0 * std::log10 (value / unityGain))
                            : juce::String ("-inf dB");
             },
             [] (const juce::String& typed) -> std::optional<double>
             {
                 if (typed.containsIgnoreCase ("inf"))
                     return 0.0;
                 const auto db = numberIn (typed);
                 return db.has_value() ? std::optional (unityGain * std::pow (10.0, *db / 20.0)) : db;
             } };
}

ValueWords ValueWords::semitones()
{
    return { [] (double value)
             { return juce::String::formatted ("%+.2f st", (value - 0.5) * semitoneRange); },
             [] (const juce::String& typed) -> std::optional<double>
             {
                 const auto semitones = numberIn (typed);
                 return semitones.has_value() ? std::optional (0.5 + *semitones / semitoneRange) : semitones;
             } };
}

ValueWords ValueWords::pitch (DeckWatch watch)
{
    return { [watch] (double value) { return percentText (1.0 + (0.5 - value) * watch->pitchRange); },
             [watch] (const juce::String& typed) -> std::optional<double>
             {
                 const auto number = numberIn (typed);
                 if (!number.has_value() || watch->pitchRange <= 0.0)
                     return {};
                 const auto isTempo =
                     endsWith (typed, "bpm")
                     || (!endsWith (typed, "%") && *number >= leastTempo && watch->grid.isKnown());
                 if (isTempo && !watch->grid.isKnown())
                     return {};
                 const auto share = isTempo ? *number / watch->grid.bpm - 1.0 : 0.01 * *number;
                 return 0.5 - share / watch->pitchRange;
             } };
}

ValueWords ValueWords::tempo()
{
    return { [] (double value) { return juce::String (value, 2); },
             [] (const juce::String& typed) -> std::optional<double>
             {
                 const auto bpm = numberIn (typed);
                 return bpm.has_value() && *bpm > 0.0 ? bpm : std::nullopt;
             } };
}

ValueWords ValueWords::share()
{
    return { [] (double value) { return juce::String (100.0 * value, 1) + " %"; },
             [] (const juce::String& typed) -> std::optional<double>
             {
                 const auto percent = numberIn (typed);
                 return percent.has_value() ? std::optional (0.01 * *percent) : percent;
             } };
}

#include "cli/VerbOptions.h"

#include "support/Suggestion.h"
#include "support/language/Translate.h"

#include <algorithm>
#include <charconv>
#include <string_view>

VerbOptions::VerbOptions (std::span<const VerbOption> known, const juce::StringArray& arguments)
{
    auto optionsEnded = false;
    for (int i = 0; i < arguments.size() && fault.isEmpty(); ++i)
    {
        const auto& argument = arguments[i];
        if (optionsEnded || !argument.startsWithChar ('-') || argument == "-")
        {
            positional.add (argument);
            continue;
        }
        if (argument == "--")
        {
            optionsEnded = true;
            continue;
        }

        const auto name = argument.upToFirstOccurrenceOf ("=", false, false);
        const auto hasInline = argument.containsChar ('=');
        const auto option = std::find_if (known.begin(), known.end(),
                                          [&name] (const VerbOption& o) { return name == o.name; });
        if (option == known.end())
        {
            juce::StringArray names;
            for (const auto& each : known)
                names.add (each.name);
            fault = tr ("There is no option %1.%2", name, didYouMean (name, names));
        }
        else if (values.containsKey (name))
            fault = tr ("The option %1 stands there twice.", name);
        else if (option->value == nullptr && hasInline)
            fault = tr ("The option %1 takes no value.", name);
        else if (option->value == nullptr)
            values.set (name, {});
        else if (hasInline)
            values.set (name, argument.fromFirstOccurrenceOf ("=", false, false));
        else if (i + 1 < arguments.size())
            values.set (name, arguments[++i]);
        else
            fault = tr ("The option %1 needs a value.", name);

        if (fault.isEmpty() && option->value != nullptr && values[name].isEmpty())
            fault = tr ("The option %1 needs a value.", name);
    }
}

std::optional<juce::int64> VerbOptions::wholeNumber (const char* name, juce::int64 byDefault,
                                                     juce::int64 lowest, juce::int64 highest)
{
    if (!has (name))
        return byDefault;
    const auto text = valueOf (name);
    const std::string_view digits (text.toRawUTF8(), text.getNumBytesAsUTF8());
    juce::int64 value = 0;
    const auto* end = digits.data() + digits.size();
    if (const auto [stopped, error] = std::from_chars (digits.data(), end, value);
        error == std::errc {} && stopped == end && value >= lowest && value <= highest)
        return value;
    fault = tr ("%1 takes a whole number from %2 to %3, not \"%4\".", name, lowest, highest, text);
    return {};
}

juce::File VerbOptions::fileOf (const char* name) const
{
    return juce::File::getCurrentWorkingDirectory().getChildFile (valueOf (name));
}

juce::String helpText (const char* usage, const char* description, std::span<const VerbOption> options)
{
    constexpr int column = 20;
    juce::String text = tr ("Usage: platterdex %1\n\n%2\n\nOptions:\n", usage, tr (description));
    for (const auto& option : options)
    {
        auto left = juce::String (option.name);
        if (option.value != nullptr)
            left << " " << option.value;
        text << "  " << left.paddedRight (' ', column) << tr (option.help) << "\n";
    }
    return text.trimEnd();
}

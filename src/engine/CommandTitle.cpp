#include "engine/CommandTitle.h"

#include "engine/CommandTable.h"
#include "support/language/Translate.h"

juce::String commandTitle (int number)
{
    const auto command = CommandTable::find (number);
    if (!command)
        return {};
    return tr (juce::String (std::string (command->name)))
        .replace ("{d}", juce::String::charToString (static_cast<juce::juce_wchar> ('A' + command.deck)))
        .replace ("{n}", juce::String (command.which + 1));
}

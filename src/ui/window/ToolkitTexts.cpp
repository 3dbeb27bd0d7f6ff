#include "ui/window/ToolkitTexts.h"

#include "support/language/Translate.h"

#include <juce_core/juce_core.h>

namespace
{
/** The texts that a hand can come across in JUCE's menus. */
constexpr const char* texts[] { N_ ("Cut"),        N_ ("Copy"), N_ ("Paste"), N_ ("Delete"),
                                N_ ("Select All"), N_ ("Undo"), N_ ("Redo"),  N_ ("(no choices)") };
}

ToolkitTexts::ToolkitTexts()
{
    LanguageInUse::addListener (*this);
    languageChanged();
}

ToolkitTexts::~ToolkitTexts()
{
    LanguageInUse::removeListener (*this);
    juce::LocalisedStrings::setCurrentMappings (nullptr);
}

void ToolkitTexts::languageChanged()
{
    juce::String mappings;
    for (const auto* text : texts)
        mappings << juce::String (text).quoted() << " = " << tr (text).quoted() << "\n";
    juce::LocalisedStrings::setCurrentMappings (new juce::LocalisedStrings (mappings, false));
}

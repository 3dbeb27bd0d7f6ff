#pragma once

#include "support/language/Language.h"

/** Gives JUCE's own texts, such as those of a text field's menu, in the language in use, for as long as somebody holds it
    by a juce::SharedResourcePointer. Message thread. */
class ToolkitTexts : private LanguageListener
{
public:
    ToolkitTexts();
    ~ToolkitTexts() override;

private:
    void languageChanged() override;
};

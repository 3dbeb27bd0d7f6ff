#pragma once

#include "session/PreferencesFile.h"
#include "settings/Folders.h"
#include "support/language/Language.h"

/** The language of a program's texts: the one that was chosen, else that of the environment, else English. Message thread. */
namespace LanguageChoice
{
/** Those that can be chosen: of the folder "languages" below the root, then of the one beside the program or plug-in. */
std::vector<Language> all (const Folders&);

/** Takes up the chosen language at the start of a program. */
void start (const Folders&);

/** Takes up another language and keeps the choice.
    @returns one sentence on why its file can't be read, or nothing */
juce::String choose (const Language&, PreferencesFile&);
}

#include "session/LanguageChoice.h"

#include "session/PreferencesPlace.h"
#include "support/files/OwnBinary.h"
#include "support/language/Translate.h"

#include <algorithm>

namespace
{
constexpr const char* preference = "language";
}

std::vector<Language> LanguageChoice::all (const Folders& folders)
{
    return Language::all ({ folders.languages(), ownBinary().getSiblingFile ("languages") });
}

void LanguageChoice::start (const Folders& folders)
{
    const auto languages = all (folders);
    const auto chosen = PreferencesFile (preferencesFileOf (folders)).get (preference);
    const auto code = Language::nearest (languages, chosen.isNotEmpty() ? chosen : Language::ofEnvironment());
    for (const auto& each : languages)
        if (each.code == code)
            // A file that can't be read leaves English, which the choice shows.
            juce::ignoreUnused (LanguageInUse::set (each));
}

juce::String LanguageChoice::choose (const Language& language, PreferencesFile& preferences)
{
    if (!LanguageInUse::set (language))
        return tr ("The language file %1 can't be read.", language.file.getFullPathName());
    // Unwritten, the choice holds until the program ends.
    juce::ignoreUnused (preferences.set (preference, language.code));
    return {};
}

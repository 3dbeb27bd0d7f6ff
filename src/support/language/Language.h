#pragma once

#include <juce_core/juce_core.h>

#include <vector>

/** A language that can be chosen. */
struct Language
{
    juce::String code; ///< the name of its file without ".mo": "de", "pt_BR"
    juce::String name; ///< in English if it is one of ours, else as the file gives it, or the code
    juce::File file;   ///< need not exist for English

    /** English first, then ours in the order of the choice, then further files by name. A file of an earlier folder hides one
        of a later. Reads the files that are not ours. Not on the audio thread. */
    static std::vector<Language> all (const std::vector<juce::File>& folders);

    /** The code out of LC_ALL, LC_MESSAGES or LANG, whichever comes first, such as "de_CH.UTF-8"; empty without one. */
    static juce::String ofEnvironment();

    /** The code of the list for a wish: the same, or that of the language without its country; "en" if there is none. */
    static juce::String nearest (const std::vector<Language>&, const juce::String& wish);
};

/** Told on the message thread after another language is in use. */
class LanguageListener
{
public:
    virtual ~LanguageListener() = default;
    virtual void languageChanged() = 0;
};

/** The language in use, one for the process. Everything but reading texts is for the message thread. */
namespace LanguageInUse
{
/** Takes up a language and tells the listeners if it was another one.
    @returns false if its file can't be read, which leaves the language as it was */
bool set (const Language&);

/** The code: "en" until another one is set. */
juce::String code();

void addListener (LanguageListener&);
void removeListener (LanguageListener&);
}

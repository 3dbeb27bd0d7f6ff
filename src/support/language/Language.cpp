#include "support/language/Language.h"

#include "support/language/MessageCatalogue.h"
#include "support/language/Translate.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <memory>
#include <string_view>

namespace
{
struct OwnLanguage
{
    const char* code;
    const char* name;
};

/** Those that come with the program, in the order of the choice. */
constexpr OwnLanguage ownLanguages[] {
    { "en", N_ ("English") }, { "fr", N_ ("French") }, { "de", N_ ("German") },
    { "it", N_ ("Italian") }, { "nl", N_ ("Dutch") },  { "es", N_ ("Spanish") },
};

/** The texts of a file, or nothing. */
std::optional<MessageCatalogue> catalogueOf (const juce::File& file)
{
    constexpr juce::int64 most = 16 << 20;
    juce::MemoryBlock bytes;
    if (file.getSize() > most || !file.loadFileAsData (bytes))
        return {};
    return MessageCatalogue::read ({ static_cast<const std::byte*> (bytes.getData()), bytes.getSize() });
}

/** The catalogues of this process. One that was in use stays: another thread may be reading it. */
struct State
{
    std::atomic<const MessageCatalogue*> inUse { nullptr };
    juce::String code { "en" };
    std::map<juce::String, std::unique_ptr<const MessageCatalogue>> taken; ///< by file and its time
    std::vector<LanguageListener*> listeners;
};

State& state()
{
    static State process;
    return process;
}

const MessageCatalogue* catalogue()
{
    return state().inUse.load (std::memory_order_acquire);
}

juce::String fromUtf8 (const char* text)
{
    return text != nullptr ? juce::String (juce::CharPointer_UTF8 (text)) : juce::String();
}
}

std::vector<Language> Language::all (const std::vector<juce::File>& folders)
{
    std::vector<Language> found;
    for (const auto& own : ownLanguages)
        for (const auto& folder : folders)
        {
            const auto file = folder.getChildFile (juce::String (own.code) + ".mo");
            const auto isLast = &folder == &folders.back();
            if (!file.existsAsFile() && !(isLast && found.empty()))
                continue;
            found.push_back ({ own.code, own.name, file });
            break;
        }
    if (found.empty())
        found.push_back ({ ownLanguages[0].code, ownLanguages[0].name, {} });
    std::map<juce::String, Language> further;
    for (const auto& folder : folders)
        for (const auto& file : folder.findChildFiles (juce::File::findFiles, false, "*.mo"))
        {
            const auto code = file.getFileNameWithoutExtension();
            const auto isKnown = std::any_of (found.begin(), found.end(),
                                              [&code] (const Language& each) { return each.code == code; });
            if (isKnown || further.contains (code))
                continue;
            if (const auto texts = catalogueOf (file))
                further[code] = { code, texts->name().isNotEmpty() ? texts->name() : code, file };
        }
    for (auto& [code, language] : further)
        found.push_back (std::move (language));
    return found;
}

juce::String Language::ofEnvironment()
{
    for (const auto* name : { "LC_ALL", "LC_MESSAGES", "LANG" })
        if (const auto value = juce::SystemStats::getEnvironmentVariable (name, {}); value.isNotEmpty())
            return value.upToFirstOccurrenceOf (".", false, false).upToFirstOccurrenceOf ("@", false, false);
    return {};
}

juce::String Language::nearest (const std::vector<Language>& languages, const juce::String& wish)
{
    for (const auto& code : { wish, wish.upToFirstOccurrenceOf ("_", false, false) })
        for (const auto& each : languages)
            if (each.code == code)
                return code;
    return ownLanguages[0].code;
}

bool LanguageInUse::set (const Language& language)
{
    auto& process = state();
    const auto key = language.file.getFullPathName()
                     + juce::String (language.file.getLastModificationTime().toMilliseconds());
    auto taken = process.taken.find (key);
    if (taken == process.taken.end())
    {
        auto made = catalogueOf (language.file);
        if (!made && language.code != ownLanguages[0].code)
            return false;
        if (made)
            taken = process.taken.emplace (key, std::make_unique<const MessageCatalogue> (std::move (*made)))
                        .first;
    }
    const auto* const texts = taken != process.taken.end() ? taken->second.get() : nullptr;
    if (process.code == language.code && process.inUse == texts)
        return true;
    process.code = language.code;
    process.inUse.store (texts, std::memory_order_release);
    for (auto* const listener : std::vector (process.listeners))
        if (std::find (process.listeners.begin(), process.listeners.end(), listener)
            != process.listeners.end())
            listener->languageChanged();
    return true;
}

juce::String LanguageInUse::code()
{
    return state().code;
}

void LanguageInUse::addListener (LanguageListener& listener)
{
    state().listeners.push_back (&listener);
}

void LanguageInUse::removeListener (LanguageListener& listener)
{
    std::erase (state().listeners, &listener);
}

juce::String tr (const char* english)
{
    if (english == nullptr || *english == 0)
        return {};
    if (const auto* const texts = catalogue())
        if (const auto* const found = texts->find (english))
            return *found;
    return fromUtf8 (english);
}

juce::String tr (const juce::String& english)
{
    return tr (english.toRawUTF8());
}

juce::String pluralForm (const char* one, const char* many, int64_t n)
{
    if (const auto* const texts = catalogue())
        if (const auto* const found =
                texts->findPlural (one, static_cast<uint64_t> (std::max<int64_t> (n, 0))))
            return *found;
    return fromUtf8 (n == 1 ? one : many);
}

juce::String filledIn (const juce::String& text, std::span<const juce::String> values)
{
    juce::String filled;
    auto from = text.getCharPointer();
    for (auto at = from; !at.isEmpty();)
    {
        const auto sign = at;
        if (at.getAndAdvance() != '%')
            continue;
        const auto place = static_cast<int> (*at) - '1';
        if (place < 0 || place >= static_cast<int> (values.size()))
            continue;
        filled << juce::String (from, sign) << values[static_cast<size_t> (place)];
        from = ++at;
    }
    return filled << juce::String (from);
}

#include "support/language/Language.h"
#include "support/language/MessageCatalogue.h"
#include "support/language/Translate.h"

#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace
{
using Texts = std::vector<std::pair<std::string, std::string>>;

/** The bytes of a .mo file, in this machine's byte order or the other one. */
std::vector<std::byte> catalogueBytes (const Texts& texts, bool swapped = false)
{
    std::vector<uint32_t> words { 0x950412de,
                                  0,
                                  static_cast<uint32_t> (texts.size()),
                                  28,
                                  static_cast<uint32_t> (28 + texts.size() * 8),
                                  0,
                                  0 };
    std::string data;
    const auto start = static_cast<uint32_t> (28 + texts.size() * 16);
    for (auto member : { &Texts::value_type::first, &Texts::value_type::second })
        for (const auto& each : texts)
        {
            words.push_back (static_cast<uint32_t> ((each.*member).size()));
            words.push_back (start + static_cast<uint32_t> (data.size()));
            data += each.*member + '\0';
        }
    std::vector<std::byte> bytes (words.size() * 4 + data.size());
    for (auto& word : words)
        word = swapped ? juce::ByteOrder::swap (word) : word;
    std::memcpy (bytes.data(), words.data(), words.size() * 4);
    std::memcpy (bytes.data() + words.size() * 4, data.data(), data.size());
    return bytes;
}

juce::String textOf (const juce::String* found)
{
    return found != nullptr ? *found : juce::String ("(none)");
}

const std::string header = "Content-Type: text/plain; charset=UTF-8\nX-Language-Name: Fran\xc3\xa7"
                           "ais\nPlural-Forms: nplurals=2; plural=(n > 1);\n";
const std::string songs ("%1 song\0%1 songs", 16), morceaux ("%1 morceau\0%1 morceaux", 22);

/** A folder of languages; English is in use again after it. */
struct Shelf
{
    ~Shelf() { LanguageInUse::set ({ "en", "English", {} }); }

    void put (const juce::String& name, const Texts& texts) const
    {
        const auto bytes = catalogueBytes (texts);
        ASSERT_TRUE (folder.file (name).replaceWithData (bytes.data(), bytes.size()));
    }

    TemporaryFolder folder;
};
}

TEST (MessageCatalogue, ReadsBothByteOrders)
{
    for (const auto swapped : { false, true })
    {
        const auto read = MessageCatalogue::read (catalogueBytes (
            { { "", header }, { songs, morceaux }, { "Load", "Charger" }, { "Play", "" } }, swapped));
        ASSERT_TRUE (read.has_value());
        EXPECT_EQ (read->name(), juce::String (juce::CharPointer_UTF8 ("Fran\xc3\xa7"
                                                                       "ais")));
        EXPECT_EQ (textOf (read->find ("Load")), "Charger");
        EXPECT_EQ (read->find ("Play"), nullptr) << "an empty translation is none";
        EXPECT_EQ (textOf (read->findPlural ("%1 song", 0)), "%1 morceau");
        EXPECT_EQ (textOf (read->findPlural ("%1 song", 2)), "%1 morceaux");
    }
}

TEST (MessageCatalogue, RefusesWhatIsCutShortAndLeavesOutWhatIsNoUtf8)
{
    const auto whole = catalogueBytes ({ { "", header }, { "Load", "Charger" }, { "Play", "\xff\xfe" } });
    for (size_t length = 0; length < whole.size(); ++length)
        EXPECT_FALSE (MessageCatalogue::read (std::span (whole).first (length)).has_value()) << length;
    EXPECT_EQ (MessageCatalogue::read (whole)->find ("Play"), nullptr);
}

TEST (PluralRule, ChoosesTheFormThatTheLanguageWants)
{
    struct Case
    {
        const char* rule;
        std::vector<std::pair<uint64_t, int>> forms;
    };
    const Case cases[] {
        { "nplurals=2; plural=(n != 1);", { { 0, 1 }, { 1, 0 }, { 2, 1 } } },
        { "nplurals=1; plural=0;", { { 0, 0 }, { 1, 0 }, { 99, 0 } } },
        { "nplurals=3; plural=(n==1 ? 0 : n%10>=2 && n%10<=4 && (n%100<10 || n%100>=20) ? 1 : 2);",
          { { 1, 0 }, { 2, 1 }, { 5, 2 }, { 12, 2 }, { 22, 1 }, { 112, 2 } } },
        { "nplurals=2; plural=n/0 + 7;", { { 1, 1 } } }, // beyond the forms: the last
    };
    for (const auto& each : cases)
    {
        const auto rule = PluralRule::read (each.rule);
        ASSERT_TRUE (rule.has_value()) << each.rule;
        for (const auto& [n, form] : each.forms)
            EXPECT_EQ (rule->formFor (n), form) << each.rule << " of " << n;
    }
    const auto deep = "nplurals=2; plural=" + std::string (100000, '(') + "n";
    for (const auto* broken : { "", "nplurals=2", "plural=n", "nplurals=0; plural=n", "nplurals=2; plural=(n",
                                "nplurals=2; plural=n n", "nplurals=2; plural=n ?", deep.c_str() })
        EXPECT_FALSE (PluralRule::read (broken).has_value()) << std::string (broken).substr (0, 40);
}

TEST (Language, FillsPlacesInTheOrderOfTheTranslation)
{
    EXPECT_EQ (tr ("%2 of %1, 50 % and %3", "a", 7), "7 of a, 50 % and %3");
    EXPECT_EQ (tr ("%1 and %2", "%2", "b"), "%2 and b") << "a value is not looked at again";
    EXPECT_EQ (trPlural ("%1 song of %2", "%1 songs of %2", 1, "x"), "1 song of x");
    EXPECT_EQ (tr (""), juce::String());
}

TEST (Language, IsSwitchedWhileRunningAndKeepsEnglishForWhatItLacks)
{
    struct Count : LanguageListener
    {
        Count() { LanguageInUse::addListener (*this); }
        ~Count() override { LanguageInUse::removeListener (*this); }
        void languageChanged() override { seen.add (tr ("Load")); }
        juce::StringArray seen;
    };
    Shelf shelf;
    shelf.put ("fr.mo", { { "", header }, { "Load", "Charger" } });
    shelf.folder.file ("de.mo").replaceWithText ("no catalogue");
    const Count count;
    const Language french { "fr", "French", shelf.folder.file ("fr.mo") };
    EXPECT_TRUE (LanguageInUse::set (french));
    EXPECT_TRUE (LanguageInUse::set (french)) << "the same again tells nobody";
    EXPECT_FALSE (LanguageInUse::set ({ "de", "German", shelf.folder.file ("de.mo") }));
    EXPECT_EQ (LanguageInUse::code(), "fr");
    EXPECT_EQ (tr ("Play"), "Play");
    EXPECT_TRUE (LanguageInUse::set ({ "en", "English", {} }));
    EXPECT_EQ (count.seen, juce::StringArray ({ "Charger", "Load" }));
}

TEST (Language, ListsOursInTheirOrderAndWhatAUserPutsThere)
{
    Shelf own, users;
    for (const auto* code : { "es", "de", "fr", "en" })
        own.put (juce::String (code) + ".mo", { { "", header } });
    users.put ("de.mo", { { "", header } });
    users.put ("pt_BR.mo", { { "", "X-Language-Name: Portugu\xc3\xaas\n" } });
    users.folder.file ("broken.mo").replaceWithText ("no catalogue");
    const auto all = Language::all ({ users.folder, own.folder });
    juce::StringArray codes;
    for (const auto& each : all)
        codes.add (each.code);
    EXPECT_EQ (codes.joinIntoString (" "), "en fr de es pt_BR");
    EXPECT_EQ (all[2].file, users.folder.file ("de.mo")) << "the user's hides ours";
    EXPECT_EQ (all[4].name, juce::String (juce::CharPointer_UTF8 ("Portugu\xc3\xaas")));
    EXPECT_EQ (Language::nearest (all, "de_CH"), "de");
    EXPECT_EQ (Language::nearest (all, "pt_BR"), "pt_BR");
    EXPECT_EQ (Language::nearest (all, "C"), "en");
}

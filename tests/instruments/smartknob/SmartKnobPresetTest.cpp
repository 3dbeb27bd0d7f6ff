#include "KnobDesk.h"

#include "instruments/preset/ContentStore.h"
#include "instruments/presets/SmartKnobLibrary.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace
{
/** The preset's text with one piece of it replaced. */
std::string altered (std::string text, std::string_view piece, std::string_view by)
{
    const auto at = text.find (piece);
    EXPECT_NE (at, std::string::npos) << piece;
    return text.replace (at, piece.size(), by);
}

std::string goodText()
{
    return std::string (SmartKnobLibrary::find (303)->text);
}

bool isSame (const SmartKnobPreset& a, const SmartKnobPreset& b)
{
    return a.name == b.name
           && std::equal (a.rows.begin(), a.rows.end(), b.rows.begin(), b.rows.end(),
                          [] (const auto& one, const auto& other)
                          {
                              return one.envelope.isSameCurve (other.envelope) && one.visible == other.visible
                                     && one.enabled == other.enabled;
                          });
}
}

TEST (SmartKnobPreset, ABadOneIsRefusedInASentenceAndChangesNothing)
{
    const auto good = goodText();
    const auto infinite = "00 00 00 00 00 00 f0 7f", notANumber = "00 00 00 00 00 00 f8 7f",
               negative = "00 00 00 00 00 00 f0 bf",
               firstTime = "03 00 00 00 03 00 00 00 03 00 00 00 00 00 00 00 00 00 00 00";
    std::string manyPoints = "data=\"03 00 00 00 03 00 00 00 ff ff ff 7f";
    for (int i = 0; i < 3000; ++i)
        manyPoints += " 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00";
    const auto time = [&] (const char* number)
    { return altered (good, firstTime, std::string (firstTime).substr (0, 36) + number); };
    const std::pair<const char*, std::string> cases[] {
        { "empty", " " },
        { "no XML", "smartKnobPreset" },
        { "another root", altered (altered (good, "<smartKnobPreset", "<sliceGatePreset"),
                                   "</smartKnobPreset", "</sliceGatePreset") },
        { "half", good.substr (0, good.size() / 2) },
        { "without its last tag", good.substr (0, good.rfind ("</")) },
        { "another version", altered (good, "version=\"2000\"", "version=\"2001\"") },
        { "a version of text", altered (good, "version=\"2000\"", "version=\"1e99\"") },
        { "no curve", altered (good, "data=", "date=") },
        { "half a curve", altered (good, " 02\" visible", "\" visible") },
        { "half a byte", altered (good, "data=\"03", "data=\"0") },
        { "no digits", altered (good, "data=\"03", "data=\"0x") },
        { "another format", altered (good, "data=\"03", "data=\"06") },
        { "a newer curve", altered (good, "data=\"03 00 00 00 03", "data=\"03 00 00 00 04") },
        { "NaN", time (notANumber) },
        { "infinity", time (infinite) },
        { "a negative time", time (negative) },
        { "too many points", altered (good, "data=\"03 00 00 00 03 00 00 00 02", manyPoints) },
        { "more bytes than a preset has", good + std::string (9u << 20, ' ') },
    };
    TemporaryFolder folder;
    KnobDesk desk;
    ASSERT_EQ (SmartKnobLibrary::loadFactory (desk.knobs, 0, 0, 222), "");
    const auto before = desk.knobs.preset (0, 0);
    const auto revision = desk.knobs.revision (0, 0);
    for (const auto& [what, text] : cases)
    {
        const auto file = folder.file ("knob.xml");
        file.replaceWithData (text.data(), text.size());
        const auto sentence = SmartKnobLibrary::loadFile (desk.knobs, 0, 0, file);
        EXPECT_TRUE (sentence.starts_with ("Nothing was loaded from knob.xml. It")
                     && sentence.ends_with ("."))
            << what << ": " << sentence;
        EXPECT_EQ (std::count (sentence.begin(), sentence.end(), '.'), 3)
            << sentence; // that of the file's name and the ends of both sentences
    }
    EXPECT_NE (SmartKnobLibrary::loadFile (desk.knobs, 0, 0, folder.file ("none.xml")), "");
    EXPECT_TRUE (isSame (desk.knobs.preset (0, 0), before));
    EXPECT_EQ (desk.knobs.revision (0, 0), revision);
}

TEST (SmartKnobPreset, AFileBringsEverythingBackAndAShortOneLeavesTheRest)
{
    TemporaryFolder folder;
    KnobDesk desk;
    ASSERT_EQ (SmartKnobLibrary::loadFactory (desk.knobs, 0, 0, 303), "");
    const auto file = folder.file (juce::CharPointer_UTF8 ("K\xc3\xbch<n & l.xml"));
    ASSERT_EQ (SmartKnobLibrary::saveFile (desk.knobs, 0, 0, file), "");
    ASSERT_EQ (SmartKnobLibrary::loadFile (desk.knobs, 3, 1, file, SmartKnobLibrary::allRows), "");
    EXPECT_EQ (desk.knobs.name (3, 1), "K\xc3\xbch<n & l");
    auto expected = desk.knobs.preset (0, 0);
    expected.name = desk.knobs.name (3, 1);
    EXPECT_TRUE (isSame (desk.knobs.preset (3, 1), expected));

    auto two = SmartKnobPreset::empty();
    two.rows.resize (2);
    desk.knobs.loadSmartKnobPreset (3, 1, two);
    EXPECT_FALSE (desk.knobs.bank (3, 1).isEnabled (0));
    EXPECT_TRUE (desk.knobs.bank (3, 1).isEnabled (3));
}

TEST (ContentStore, KeepsWhatChangedAndSparesADamagedFile)
{
    TemporaryFolder folder;
    std::string value = "first";
    uint32_t revision = 0;
    const auto makeStore = [&]
    {
        auto store = std::make_unique<ContentStore> (folder);
        store->add ({ .fileName = "value.xml",
                      .revision = [&] { return revision; },
                      .write = [&] { return value; },
                      .read = [&] (std::string_view bytes) -> std::string
                      {
                          if (bytes == "broken")
                              return "It is broken.";
                          value = bytes;
                          ++revision;
                          return {};
                      } });
        return store;
    };
    auto store = makeStore();
    EXPECT_TRUE (store->restore().empty());
    EXPECT_TRUE (store->takeChanged().empty());
    value = "second";
    ++revision;
    store->save();
    EXPECT_TRUE (store->takeChanged().empty());

    value = "default";
    store = makeStore();
    EXPECT_TRUE (store->restore().empty());
    EXPECT_EQ (value, "second");
    EXPECT_TRUE (store->takeChanged().empty()) << "what was read need not be written";

    const auto file = folder.file ("value.xml");
    file.replaceWithText ("broken");
    value = "default";
    store = makeStore();
    EXPECT_EQ (store->restore().size(), 1u);
    EXPECT_EQ (value, "default");
    EXPECT_FALSE (file.existsAsFile());
    EXPECT_EQ (folder.file ("value.xml.bad").loadFileAsString(), "broken");
}

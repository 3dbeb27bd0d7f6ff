#include "plugins/catalogue/KnownPlugins.h"
#include "plugins/catalogue/PluginFileFilter.h"
#include "plugins/catalogue/PluginListFile.h"
#include "plugins/catalogue/SharedObject.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace
{
const juce::File evil (PX_EVIL_PLUGINS);

juce::MemoryBlock bytesOf (const juce::File& file)
{
    juce::MemoryBlock bytes;
    file.loadFileAsData (bytes);
    return bytes;
}

KnownPluginEntry entryNamed (const char* name, const char* file)
{
    KnownPluginEntry entry;
    entry.description.name = juce::String::fromUTF8 (name);
    entry.description.pluginFormatName = PluginFileFilter::vst2;
    entry.description.fileOrIdentifier = entry.file = file;
    entry.description.numOutputChannels = 2;
    return entry;
}
}

TEST (PluginFileFilter, TakesPluginsOfThreeFormatsAndNothingElse)
{
    const TemporaryFolder folder;
    const auto plugin = evil.getChildFile ("gain.so");
    const auto bytes = bytesOf (plugin);
    ASSERT_TRUE (PluginFileFilter::isPluginFile (plugin));
    EXPECT_EQ (PluginFileFilter::isPluginFile (plugin)->width, 64);

    // The same library as a VST3 lacks that format's entry, and so do the others.
    const auto vst3 = folder.file ("a.vst3");
    vst3.getChildFile ("Contents/x86_64-linux/a.so").create();
    plugin.copyFileTo (vst3.getChildFile ("Contents/x86_64-linux/a.so"));
    EXPECT_FALSE (PluginFileFilter::isPluginFile (vst3));
    const auto lv2 = folder.file ("a.lv2");
    lv2.createDirectory();
    plugin.copyFileTo (lv2.getChildFile ("a.so"));
    lv2.getChildFile ("manifest.ttl").replaceWithText ("<urn:a> a lv2:Plugin ; lv2:binary <a.so> .");
    EXPECT_FALSE (PluginFileFilter::isPluginFile (lv2));

    lv2.getChildFile ("manifest.ttl")
        .replaceWithText ("@prefix x: <urn:made#> . x:gain-2 a lv2:Plugin . <urn:other> a lv2:Plugin .");
    for (const auto& [uri, isNamed] : { std::pair { "urn:made#gain-2", true },
                                        { "urn:made#gain", false },
                                        { "urn:other", true },
                                        { "urn:oth", false } })
        EXPECT_EQ (PluginFileFilter::manifestNames (lv2, uri), isNamed) << uri;

    const auto copy = folder.file ("copy.dll");
    plugin.copyFileTo (copy);
    EXPECT_FALSE (PluginFileFilter::isPluginFile (copy));
    EXPECT_FALSE (PluginFileFilter::isPluginFile (folder.file ("none.so")));
    EXPECT_FALSE (PluginFileFilter::isPluginFile (juce::File ("/lib/x86_64-linux-gnu/libm.so.6")));
    const auto text = folder.file ("text.so");
    text.replaceWithText ("INPUT ( -lm )");
    EXPECT_FALSE (PluginFileFilter::isPluginFile (text));

    // A bundle is one candidate, and its library none.
    juce::StringArray names;
    PluginFileFilter::forEachCandidate (folder, [&] (const juce::File& file)
                                        { return names.add (file.getFileName()), true; });
    names.sort (true);
    EXPECT_EQ (names.joinIntoString (" "), "a.lv2 a.vst3 text.so");
}

TEST (SharedObject, OfAnyWidthIsReadAndACutOneIsNoFault)
{
    auto bytes = bytesOf (evil.getChildFile ("gain.so"));
    const auto read = [&] (size_t length) {
        return readSharedObject ({ static_cast<const std::byte*> (bytes.getData()), length });
    };
    const auto whole = read (bytes.getSize());
    ASSERT_TRUE (whole);
    EXPECT_TRUE (std::find (whole->exports.begin(), whole->exports.end(), "VSTPluginMain")
                 != whole->exports.end());
    EXPECT_TRUE (std::find (whole->exports.begin(), whole->exports.end(), "malloc") == whole->exports.end());
    for (size_t length = 0; length < bytes.getSize(); length += 97)
    {
        const auto cut = read (length);
        EXPECT_TRUE (!cut || cut->exports.size() <= whole->exports.size());
    }
    bytes[18] = 0x28; // a machine that this class does not have
    bytes[19] = 0x7f;
    EXPECT_FALSE (read (bytes.getSize()));
}

TEST (PluginList, SurvivesTheFile)
{
    const TemporaryFolder folder;
    const auto file = folder.file ("vst_plugins_list.xml");
    {
        KnownPlugins list (file);
        auto odd = entryNamed ("Z\xc3\xa4hler <&\"'> \x01", "/b.so");
        odd.description.uniqueId = -5;
        odd.latency = 77;
        odd.fileTime = 1234567890123;
        auto crashed = entryNamed ("bad", "/c.so");
        crashed.state = VerifiedState::crashed;
        crashed.reason = "The scanner died of it.";
        list.put ("/b.so", { odd });
        list.put ("/c.so", { crashed });
        ASSERT_TRUE (list.save());
    }
    EXPECT_TRUE (file.loadFileAsString().contains ("<pluginList version=\"2000\""));
    EXPECT_TRUE (file.loadFileAsString().contains ("verified=\"CRASHED\""));
    const KnownPlugins list (file);
    ASSERT_EQ (list.entries().size(), 2u);
    const auto odd = list.entries()[1];
    EXPECT_TRUE (odd.description.name.startsWith (juce::String::fromUTF8 ("Z\xc3\xa4hler <&\"'>")));
    EXPECT_EQ (odd.description.uniqueId, -5);
    EXPECT_EQ (odd.latency, 77);
    EXPECT_EQ (odd.fileTime, 1234567890123);
    EXPECT_EQ (list.usable().size(), 1u); // what crashed is kept and not offered
    EXPECT_FALSE (
        PluginListFile::read ("<otherList><KNOWNPLUGINS><PLUGIN file=\"/a\"/></KNOWNPLUGINS></otherList>"));
    EXPECT_FALSE (PluginListFile::read (""));
}

TEST (KnownPlugins, AreFoundByWhatAUserWrites)
{
    KnownPlugins list { juce::File() };
    list.put ("/v/Reverb One.so", { entryNamed ("Reverb One", "/v/Reverb One.so") });
    list.put ("/v/two.so", { entryNamed ("Reverb Two", "/v/two.so") });
    struct Case
    {
        const char *word, *name;
    };
    for (const auto& [word, name] :
         { Case { "/v/two.so", "Reverb Two" }, Case { "reverb one", "Reverb One" },
           Case { "Reverb T", "Reverb Two" }, Case { "reverb", "" }, Case { "", "" } })
    {
        const auto found = list.find (word);
        EXPECT_EQ (found ? found->description.name : juce::String(), name) << word;
    }
}

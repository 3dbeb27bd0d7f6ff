#include "midi/script/MidiScriptEngine.h"
#include "../FakeMidiBackend.h"
#include "ScriptFixture.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;
using Bytes = FakeMidiBackend::Bytes;

namespace
{
/** Scripts over a fake system of ports. */
struct ScriptsFixture
{
    ScriptsFixture() { begin(); }

    void begin()
    {
        scripts.reset();
        MidiPortService::Backends backends;
        backends.push_back (std::make_unique<FakeMidiBackend>());
        cables = static_cast<FakeMidiBackend*> (backends.front().get());
        service = std::make_unique<MidiPortService> (std::move (backends));
        service->watch();
        scripts = std::make_unique<MidiScriptEngine> (nullptr, *service, folder, ScriptFixture::shortTimes);
    }

    juce::String plugAndUse (const char* name)
    {
        const auto handle = cables->plug (name);
        service->lookNow();
        scripts->ports().setInputEnabled (name, true);
        scripts->ports().setOutputEnabled (name, true);
        service->lookNow();
        return handle;
    }

    /** Loads a script whose lamp `data` follows the last message. */
    juce::File loadEcho (const char* name, int data, const juce::String& onTimer = {})
    {
        const auto file = folder.file (name);
        file.replaceWithText (
            ScriptFixture::withBodies ("sendMidiMessage(status, " + juce::String (data) + ", value);",
                                       onTimer, {}, {}, "int ticks = 0;"));
        scripts->addScript (file);
        scripts->waitUntilIdle();
        return file;
    }

    bool comes (const juce::String& device, const Bytes& message)
    {
        return ScriptFixture::comes (
            [&]
            {
                const auto sent = cables->takeSent (device);
                return std::find (sent.begin(), sent.end(), message) != sent.end();
            });
    }

    const TemporaryFolder folder;
    FakeMidiBackend* cables = nullptr;
    std::unique_ptr<MidiPortService> service;
    std::unique_ptr<MidiScriptEngine> scripts;
};
}

TEST (MidiScriptEngine, EveryScriptHearsEveryShortMessageOfItsPorts)
{
    ScriptsFixture f;
    const auto device = f.plugAndUse ("Surface");
    f.loadEcho ("one.c", 1);
    const auto two = f.loadEcho ("two.c", 2);
    f.cables->play (device, { 0xf0, 1, 2, 0xf7 });
    f.cables->play (device, { 0xc0, 1 });
    EXPECT_EQ (f.scripts->lastMessage(), 0u);
    f.cables->play (device, { 0x83, 60, 64 });
    EXPECT_EQ (f.scripts->lastMessage(), 0x003c93u) << "a note off is a note on of value 0";
    EXPECT_TRUE (f.comes (device, { 0x93, 1, 0 }));
    f.cables->play (device, { 0x90, 60, 64 });
    EXPECT_TRUE (f.comes (device, { 0x90, 2, 64 }));

    f.scripts->removeScript (two);
    f.scripts->waitUntilIdle();
    f.cables->takeSent (device);
    f.cables->play (device, { 0x90, 60, 65 });
    EXPECT_TRUE (f.comes (device, { 0x90, 1, 65 }));
    EXPECT_EQ (f.scripts->rows().size(), 1u);
}

TEST (MidiScriptEngine, HungScriptHoldsUpNeitherPortNorOtherScripts)
{
    ScriptsFixture f;
    const auto device = f.plugAndUse ("Surface");
    const auto bad = f.folder.file ("bad.c");
    bad.replaceWithText (ScriptFixture::withBodies ("while(true);", "while(true);"));
    f.scripts->addScript (bad);
    f.loadEcho ("good.c", 1);
    for (int i = 0; i < 5000; ++i)
        f.cables->play (device, { 0xb0, 7, static_cast<uint8_t> (i % 127) });
    f.cables->play (device, { 0xb0, 7, 127 });
    EXPECT_TRUE (f.comes (device, { 0xb0, 1, 127 }));
    EXPECT_TRUE (ScriptFixture::comes ([&] { return f.scripts->rows()[0].hasHung; }));
    EXPECT_EQ (f.scripts->rows()[1],
               (MidiScriptEngine::Row { f.folder.file ("good.c"), MidiScript::State::running, false }));
}

TEST (MidiScriptEngine, DeviceThatComesBackGetsItsLampsAgain)
{
    ScriptsFixture f;
    const auto device = f.plugAndUse ("Surface");
    f.loadEcho ("lamp.c", 1, "sendMidiMessage(0x90, 5, 99);");
    EXPECT_TRUE (f.comes (device, { 0x90, 5, 99 }));
    f.cables->pull (device);
    f.service->lookNow();
    const auto again = f.cables->plug ("Surface");
    f.service->lookNow();
    EXPECT_TRUE (f.comes (again, { 0x90, 5, 99 }));
}

TEST (MidiScriptEngine, LampThatAPortLosesIsStatedAgain)
{
    ScriptsFixture f;
    const auto device = f.plugAndUse ("Surface");
    f.cables->limitOutputs (0);
    f.loadEcho ("lamp.c", 1, "sendMidiMessage(0x90, 5, 99); ticks++; if(ticks == 3) log(\"three\");");
    EXPECT_TRUE (ScriptFixture::comes ([&] { return f.scripts->journal().newest() > 0; }));
    f.cables->limitOutputs (-1);
    EXPECT_TRUE (f.comes (device, { 0x90, 5, 99 }));
}

TEST (MidiScriptEngine, SetupKeepsScriptsAndPortsThatAreAbsent)
{
    ScriptsFixture f;
    f.plugAndUse ("Surface");
    const auto setup = f.folder.file ("script_setup.xml");
    f.loadEcho ("one.c", 1);
    f.scripts->addScript (f.folder.file ("missing.c"));
    ASSERT_TRUE (f.scripts->saveSetup (setup));
    f.begin();
    ASSERT_TRUE (f.scripts->loadSetup (setup));
    f.scripts->waitUntilIdle();
    const auto rows = f.scripts->rows();
    ASSERT_EQ (rows.size(), 2u);
    EXPECT_EQ (rows[0].state, MidiScript::State::running);
    EXPECT_EQ (rows[1].state, MidiScript::State::none);
    EXPECT_THAT (f.scripts->journal().after (0).back().text.toStdString(), HasSubstr ("There is no file"));
    EXPECT_THAT (f.scripts->ports().wanted (MidiDirection::output),
                 ElementsAre (MidiPortSet::Wanted { "Surface", 0 }));

    for (const auto* text : { "", "<midiList/>", "<midiScript><script file='x.c'>" })
    {
        setup.replaceWithText (text);
        EXPECT_FALSE (f.scripts->loadSetup (setup)) << text;
        EXPECT_EQ (f.scripts->rows().size(), 2u) << "nothing changes";
    }
}

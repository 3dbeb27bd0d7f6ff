#include "ScriptFixture.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;
using Bytes = FakeSurface::Bytes;

namespace
{
std::string onlyTextOf (const ScriptFixture& f)
{
    const auto told = f.told();
    return told.size() == 1 ? told.front().toStdString() : std::to_string (told.size()) + " messages";
}
}

TEST (MidiScript, CallsAllFourWithTheirArguments)
{
    ScriptFixture f;
    ASSERT_TRUE (
        f.load (ScriptFixture::withBodies ("log(name + \" \" + status + \",\" + data + \",\" + value);", {},
                                           "log(\"start\");", "log(\"stop\");")));
    f.post (0x93, 60, 0, "Port \xc3\xa4");
    ASSERT_TRUE (ScriptFixture::comes ([&] { return f.journal.newest() == 2; }));
    f.script.stopScript();
    EXPECT_THAT (f.told(), ElementsAre ("start", juce::String::fromUTF8 ("Port \xc3\xa4 147,60,0"), "stop"));
    EXPECT_EQ (f.script.state(), MidiScript::State::none);
}

TEST (MidiScript, MissingFunctionsAreNamedOneAtATime)
{
    const char* const names[] { "OnMidiMessageReceived(const string &in n, int s, int d, int v)",
                                "OnTimerCallback()", "OnStart()", "OnStop()" };
    const char* const texts[] { "Cannot find function 'void OnMidiMessageReceived(std::string &in name, int "
                                "status, int data, int value)'",
                                "Cannot find function 'void OnTimerCallback()'",
                                "Cannot find function'void OnStart()'",
                                "Cannot find function'void OnStop()'" };
    for (size_t missing = 0; missing < std::size (names); ++missing)
    {
        ScriptFixture f;
        juce::String text ("int other;\n");
        for (size_t i = 0; i < missing; ++i)
            text << "void " << names[i] << " {}\n";
        EXPECT_FALSE (f.load (text));
        EXPECT_EQ (onlyTextOf (f), std::string ("Error (Ln 0, Col 0) : ") + texts[missing]);
        EXPECT_EQ (f.script.state(), MidiScript::State::failed);
    }
}

TEST (MidiScript, ABuildGathersItsMessagesWithTheirPlaces)
{
    ScriptFixture f;
    ASSERT_TRUE (f.load (ScriptFixture::withBodies ({})));
    EXPECT_FALSE (f.load (ScriptFixture::withBodies ("int a = b;\n  foo();")));
    const auto told = f.told();
    ASSERT_FALSE (told.empty());
    EXPECT_THAT (told, testing::Contains (
                           testing::Property (&juce::String::toStdString, HasSubstr ("Error (Ln 2, Col "))));
    EXPECT_THAT (told, testing::Contains (testing::Property (&juce::String::toStdString,
                                                             HasSubstr ("Error (Ln 3, Col 3) : "))));
    EXPECT_EQ (f.script.state(), MidiScript::State::failed) << "the former script is gone";

    juce::String many;
    for (int i = 0; i < 1000; ++i)
        many << "int f" << i << "() { return missing" << i << "; }\n";
    EXPECT_FALSE (f.load (many));
    EXPECT_THAT (f.told().back().toStdString(), HasSubstr ("more messages are not shown."));
}

TEST (MidiScript, SendsWhatHasChangedInTheBytesOfItsKind)
{
    ScriptFixture f;
    const auto text = ScriptFixture::withBodies (
        {}, {},
        "sendMidiMessage(0x90, 200, 5); sendMidiMessage(0x90, 127, 5); sendMidiMessage(0x90, 127, 6);"
        "sendMidiMessage(5, -1, 300); sendMidiMessage(0xC1, 7, 9); sendMidiMessage(0x90, 3, 0);");
    ASSERT_TRUE (f.load (text));
    const auto first = f.surface.sent();
    EXPECT_THAT (first, ElementsAre (Bytes { 0x90, 127, 5 }, Bytes { 0x90, 127, 6 },
                                     Bytes { 0x80, 0, 300 & 127 }, Bytes { 0xC1, 7 }, Bytes { 0x90, 3, 0 }));
    ASSERT_TRUE (f.load (text));
    EXPECT_EQ (f.surface.sent().size(), 2 * first.size()) << "a new load sends again";
}

TEST (MidiScript, SysExIsPairsOfDigits)
{
    struct Case
    {
        const char* text;
        Bytes sent;
    };
    const Case cases[] { { "", {} },
                         { "F0", {} },
                         { "F07", {} },
                         { "F07F", { 0xf0, 0x7f } },
                         { "f07fE", { 0xf0, 0x7f } },
                         { "F0 7E 7F 06 01 F7", { 0xf0, 0x7e, 0x7f, 0x06, 0x01, 0xf7 } } };
    for (const auto& c : cases)
    {
        ScriptFixture f;
        ASSERT_TRUE (f.load (
            ScriptFixture::withBodies ({}, {}, juce::String ("sendSysExMessage(\"") + c.text + "\");")));
        EXPECT_EQ (f.surface.sent(), c.sent.empty() ? std::vector<Bytes> {} : std::vector<Bytes> { c.sent })
            << c.text;
    }
}

TEST (MidiScript, ExceptionIsNamedOnceAndTheCallbackLivesOn)
{
    ScriptFixture f;
    ASSERT_TRUE (f.load (ScriptFixture::withBodies (
        "if(value == 0) { int z = 0; z = 5 / z; }\nsendMidiMessage(0x90, 1, value);")));
    for (int i = 0; i < 5; ++i)
        f.post (0x90, 1, 0);
    f.post (0x90, 1, 99);
    EXPECT_TRUE (ScriptFixture::comes ([&] { return f.surface.lamp (0x90, 1) == 99; }));
    EXPECT_THAT (onlyTextOf (f),
                 HasSubstr ("Error (Ln 2, Col 114) : OnMidiMessageReceived failed: Divide by zero."));
}

/** A script that loops for ever, wherever it does. */
class MidiScriptLoop : public testing::TestWithParam<const char*>
{
};

TEST_P (MidiScriptLoop, IsEndedNamedOnceAndHoldsNobodyUp)
{
    const juce::String where (GetParam());
    const auto loop = juce::String ("try { while(true) n++; } catch { log(\"caught\"); }");
    const auto bodyOf = [&] (const char* name, const char* other)
    { return juce::String (other) + (where == name || where == "all" ? loop : juce::String()); };
    ScriptFixture f;
    const auto begin = std::chrono::steady_clock::now();
    const auto isRunning = f.load (ScriptFixture::withBodies (
        bodyOf ("message", "sendMidiMessage(0xB0, 1, value);"),
        bodyOf ("timer", "sendMidiMessage(0xB0, 2, ++ticks % 128);"), bodyOf ("start", ""),
        bodyOf ("stop", ""),
        "int n = 0; int ticks = 0;"
            + (where == "globals" ? "int f() { " + loop + " return 1; } int g = f();" : juce::String())
            + "class Endless { ~Endless() { " + (where == "destructor" ? loop : juce::String())
            + " } } Endless endless;"));
    EXPECT_EQ (isRunning, where != "globals");
    if (isRunning && where != "timer" && where != "all")
    {
        for (int i = 0; i < 2000; ++i)
            f.post (0x90, 1, i % 128);
        const auto ticks = f.surface.lamp (0xB0, 2);
        EXPECT_TRUE (ScriptFixture::comes ([&] { return f.surface.lamp (0xB0, 2) != ticks; }))
            << "the other thread lives";
    }
    if (where == "message" || where == "timer" || where == "all")
    {
        f.post (0x90, 1, 1);
        EXPECT_TRUE (ScriptFixture::comes ([&] { return f.script.hasHung(); }));
    }
    f.script.stopScript();
    EXPECT_LT (std::chrono::steady_clock::now() - begin, std::chrono::seconds (10));
    auto errors = 0u;
    for (const auto& entry : f.journal.after (0))
        errors += entry.kind == ScriptEntry::Kind::error && entry.text.contains ("did not end within 0.2 s")
                  && entry.line > 0;
    EXPECT_EQ (errors, where == "none" || where == "destructor" ? 0u : where == "all" ? 4u : 1u);
    EXPECT_LE (f.told().size(), errors + 1) << "at most that messages were dropped";
    EXPECT_TRUE (f.load (ScriptFixture::withBodies ({}))) << "the next script runs";
}

INSTANTIATE_TEST_SUITE_P (Everywhere, MidiScriptLoop,
                          testing::Values ("none", "message", "timer", "start", "stop", "globals",
                                           "destructor", "all"),
                          [] (const auto& info) { return std::string (info.param); });

TEST (MidiScript, RunningCallIsEndedWhenTheScriptStops)
{
    ScriptTimes times = ScriptFixture::shortTimes;
    times.callback = std::chrono::hours (1);
    ScriptFixture f (nullptr, times);
    ASSERT_TRUE (f.load (ScriptFixture::withBodies ("while(true);", "while(true);")));
    f.post (0x90, 1, 1);
    f.script.stopScript();
    EXPECT_TRUE (f.told().empty());
}

TEST (MidiScript, TwoThreadsChangeOneStringAndArray)
{
    ScriptFixture f;
    const juce::String work = "s += \"x\"; a.insertLast(s); if(a.length() > 50) { a.resize(0); s = \"\"; }";
    ASSERT_TRUE (f.load (ScriptFixture::withBodies (
        "for(int i = 0; i < 20; i++) { " + work + " } sendMidiMessage(0xB0, 1, ++n % 128);",
        "for(int i = 0; i < 100; i++) { " + work + " }", {}, {}, "string s; array<string> a; int n = 0;")));
    for (int i = 0; i < 1000; ++i)
        f.post (0x90, 1, 1);
    EXPECT_TRUE (ScriptFixture::comes ([&] { return f.surface.lamp (0xB0, 1) == 1000 % 128; }));
    EXPECT_TRUE (f.told().empty()) << f.told().front();
}

TEST (MidiScript, CallbacksMixBetweenTwoLines)
{
    ScriptFixture f;
    ASSERT_TRUE (f.load (ScriptFixture::withBodies (
        "int before = ticks; while(ticks < before + 3); sendMidiMessage(0x90, 1, 1);", "ticks++;", {}, {},
        "int ticks = 0;")));
    f.post (0x90, 1, 1);
    EXPECT_TRUE (ScriptFixture::comes ([&] { return f.surface.lamp (0x90, 1) == 1; }))
        << "the timer ran in the middle";
}

TEST (MidiScript, FloodArrivesWholeAndInOrder)
{
    ScriptFixture f;
    ASSERT_TRUE (f.load (ScriptFixture::withBodies (
        "if(last != (value + 127) % 128) log(\"gap\"); last = value; if(++n == 100000) log(\"done\");", {},
        {}, {}, "int n = 0; int last = 127;")));
    for (int i = 0; i < 100000; ++i)
        f.post (0xB0, 1, i % 128);
    EXPECT_TRUE (ScriptFixture::comes ([&] { return f.journal.newest() > 0; }));
    EXPECT_EQ (onlyTextOf (f), "done");
}

TEST (MidiScript, MemoryHasAnEnd)
{
    struct Case
    {
        const char* body;
        const char* told;
    };
    const Case cases[] { { "array<int> a(100000000);", "Out of memory" },
                         { "array<array<int>> a; while(true) { array<int> b(10000000); a.insertLast(b); }",
                           "Out of memory" },
                         { "OnStop();", "Stack overflow" } };
    for (const auto& c : cases)
    {
        ScriptFixture f (nullptr, {});
        ASSERT_TRUE (f.load (ScriptFixture::withBodies ({}, {}, c.body, "OnStart();")));
        EXPECT_THAT (f.told().front().toStdString(), HasSubstr (c.told)) << c.body;
    }
}

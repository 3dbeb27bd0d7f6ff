#include "plugins/ipc/ScannerProtocol.h"
#include "plugins/scan/ScanThread.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>

#include <csignal>
#include <sys/stat.h>

namespace
{
using Outcome = IPCPluginScanner::Outcome;

const juce::File evil (PX_EVIL_PLUGINS);

/** A scan with a short patience that keeps what it hears. */
struct Scan : IPCPluginScanner::Listener
{
    explicit Scan (juce::File program = juce::File (PX_SCANNER))
    {
        options.process.program = std::move (program);
        options.process.disablePopups = true;
        options.process.startLooks = 100;
        options.log = folder.file ("scan.log");
        options.patience = { .lookMs = 1, .silentLooks = 3000, .hangingMs = 1000 };
    }

    Outcome operator() (const juce::File& file)
    {
        if (scanner == nullptr)
            scanner = std::make_unique<IPCPluginScanner> (known, *this, options);
        return scanner->scanFile (file);
    }
    Outcome operator() (const char* behaviour)
    {
        return (*this) (evil.getChildFile (juce::String (behaviour) + ".so"));
    }

    KnownPluginEntry entry (const char* behaviour) const
    {
        for (const auto& each : known.entries())
            if (each.file.endsWith ("/" + juce::String (behaviour) + ".so"))
                return each;
        return {};
    }

    void scanPing() override { ++pings; }
    void pluginHanging (bool hangs) override
    {
        hanging.push_back (hangs);
        if (hangs && skipsHanging)
            scanner->requestSkip();
    }

    TemporaryFolder folder;
    IPCPluginScanner::Options options;
    KnownPlugins known { juce::File() };
    std::unique_ptr<IPCPluginScanner> scanner;
    int pings = 0;
    std::vector<bool> hanging;
    bool skipsHanging = true;
};

/** A program of the shell in the scanner's place, which speaks into the mailbox as it likes. */
juce::File partner (const TemporaryFolder& folder, const juce::String& body)
{
    const auto file = folder.file ("partner.sh");
    file.replaceWithText ("#!/usr/bin/env python3\n"
                          "import mmap, os, struct, sys, time\n"
                          "box = mmap.mmap(os.open('/dev/shm' + sys.argv[3], os.O_RDWR), 2000008)\n"
                          "def word(at): return struct.unpack_from('<I', box, at)[0]\n"
                          "def say(text, length=None):\n"
                          "    while word(1000004): time.sleep(0.001)\n"
                          "    box[1000008:1000008+len(text)+1] = text + b'\\0'\n"
                          "    struct.pack_into('<I', box, 1000004, length or len(text) + 1)\n"
                          "def order():\n"
                          "    while not word(0): time.sleep(0.001)\n"
                          "    struct.pack_into('<I', box, 0, 0)\n"
                          "me = b'slaveprocessid %d' % os.getpid()\n"
                              + body + "\ntime.sleep(600)\n",
                          false, false, "\n");
    ::chmod (file.getFullPathName().toRawUTF8(), 0700);
    return file;
}
}

TEST (Scanner, FindsWhatPluginsAreAndMarksWhatTheyDo)
{
    struct Case
    {
        const char* behaviour;
        Outcome outcome;
    };
    Scan scan;
    scan.skipsHanging = false; // one of them takes a second
    for (const auto& [behaviour, outcome] :
         { Case { "gain", Outcome::found }, Case { "crash_scan", Outcome::crashed },
           Case { "delay", Outcome::found }, Case { "crash_thread", Outcome::crashed },
           Case { "quiet_exit", Outcome::crashed }, Case { "nothing", Outcome::failed },
           Case { "child_left", Outcome::found }, Case { "crash_exit", Outcome::crashed },
           Case { "no_output", Outcome::found }, Case { "one_in_six_out", Outcome::found },
           Case { "popups", Outcome::found }, Case { "huge_state", Outcome::found } })
        EXPECT_EQ (scan (behaviour), outcome) << behaviour;
    EXPECT_EQ (scan (juce::File ("/lib/x86_64-linux-gnu/libc.so.6")), Outcome::refused);
    scan.scanner->shutdown();

    EXPECT_EQ (scan.entry ("gain").description.manufacturerName, "Tests & \"Sons\"");
    EXPECT_EQ (scan.entry ("delay").latency, 100);
    EXPECT_EQ (scan.entry ("one_in_six_out").description.numOutputChannels, 6);
    EXPECT_EQ (scan.entry ("crash_scan").state, VerifiedState::crashed);
    EXPECT_EQ (scan.entry ("nothing").state, VerifiedState::failed);
    EXPECT_EQ (scan.known.usable().size(), 6u) << "no_output has nothing to play";
    const auto log = scan.options.log.loadFileAsString();
    EXPECT_TRUE (log.contains ("PROCESS DEAD? : ") && log.contains ("crash_scan.so"));
    EXPECT_TRUE (log.contains ("Killing process failed (probably it was already dead)!"));
}

TEST (Scanner, BlamesNoPluginForAScannerThatIsNotThere)
{
    Scan scan (evil.getChildFile ("no scanner"));
    EXPECT_EQ (scan ("gain"), Outcome::failed);
    EXPECT_EQ (scan.entry ("gain").reason, "The scanner could not be started.");
    EXPECT_FALSE (scan.known.isUpToDate (evil.getChildFile ("gain.so"))) << "it would never be scanned again";
}

TEST (Scanner, OffersToSkipAPluginThatHangs)
{
    Scan scan;
    EXPECT_EQ (scan ("hang_200"), Outcome::failed);
    EXPECT_EQ (scan.hanging, (std::vector { true, false }));
    EXPECT_GT (scan.pings, 0);
    EXPECT_TRUE (scan.entry ("hang_200").reason.contains ("skipped"));
    EXPECT_EQ (scan ("gain"), Outcome::found);
}

TEST (Scanner, WaitsForALatePluginAndTakesItsAnswer)
{
    const TemporaryFolder folder;
    Scan scan (partner (folder,
                        "say(me); order()\n"
                        "for i in range(150): say(b'ping'); time.sleep(0.01)\n"
                        "say(b'break'); say(b'<pluginList><KNOWNPLUGINS><PLUGIN name=\"late\" file=\"/x\" "
                        "numOutputs=\"2\"/></KNOWNPLUGINS></pluginList>')"));
    scan.skipsHanging = false;
    EXPECT_EQ (scan ("gain"), Outcome::found);
    EXPECT_EQ (scan.hanging, (std::vector { true, false }));
    EXPECT_EQ (scan.entry ("gain").description.name, "late")
        << "the answer belongs to the file that was asked for";
}

TEST (Scanner, OutlivesAPartnerThatMisbehaves)
{
    struct Case
    {
        const char* name;
        const char* body;
        Outcome outcome;
        int startLooks = 600;
    };
    for (const auto& [name, body, outcome, startLooks] : {
             Case { "never speaks", "", Outcome::failed, 20 },
             Case { "another's number", "say(b'slaveprocessid 1')", Outcome::failed, 20 },
             Case { "takes no order", "say(me)", Outcome::crashed },
             Case { "dies at once", "sys.exit(0)", Outcome::failed },
             Case { "dies at the order", "say(me); order(); os._exit(1)", Outcome::crashed },
             Case { "breaks without a result", "say(me); order(); say(b'break'); os._exit(1)",
                    Outcome::crashed },
             Case { "result that is none", "say(me); order(); say(b'break'); say(b'<pluginList')",
                    Outcome::failed },
             Case { "empty list", "say(me); order(); say(b'break'); say(b'<pluginList/>')", Outcome::failed },
             Case { "wrong length", "say(me); order(); say(b'break'); say(b'<pluginList/>', 4000000000)",
                    Outcome::failed },
             Case { "floods", "say(me); order()\nwhile True: say(b'noise' * 1000)", Outcome::failed },
         })
    {
        const TemporaryFolder folder;
        Scan scan (partner (folder, body));
        scan.options.process.startLooks = startLooks;
        scan.options.patience.silentLooks = 300;
        EXPECT_EQ (scan ("gain"), outcome) << name;
        EXPECT_EQ (scan.known.entries().size(), 1u) << name;
    }
}

TEST (ScannerProcess, PassesOverOrdersThatAreNone)
{
    const auto scanner = ScannerProcess::start (
        { .program = juce::File (PX_SCANNER), .disablePopups = true, .startLooks = 600 },
        [] { return false; });
    ASSERT_NE (scanner, nullptr);
    auto& box = scanner->mailbox();
    for (const auto& text :
         { std::string ("noise"), std::string ("break"), std::string ("scan"), std::string (999999, '"'),
           std::string ("scan \"/none.so\" 65"), std::string ("trial 48000 0 \"\"\n"),
           ScannerProtocol::messageOf (
               { evil.getChildFile ("gain.so").getFullPathName().toStdString(), 64 }) })
        while (!box.send (text, 1000))
            ASSERT_TRUE (scanner->isAlive()) << text.substr (0, 80);
    std::string answer;
    while (answer.find ("<PLUGIN") == std::string::npos)
    {
        ASSERT_TRUE (scanner->isAlive());
        answer = box.receive();
    }
    EXPECT_NE (answer.find ("name=\"gain\""), std::string::npos);
}

TEST (ScanThread, ScansAFolderOnceAndEndsWhenAsked)
{
    const TemporaryFolder folder;
    evil.getChildFile ("gain.so").copyFileTo (folder.file ("gain.so"));
    evil.getChildFile ("crash_scan.so").copyFileTo (folder.file ("crash_scan.so"));
    evil.getChildFile ("delay.so").copyFileTo (folder.file ("delay.so"));
    const auto known = std::make_shared<KnownPlugins> (folder.file ("list.xml"));
    ScanThread::Options options;
    options.searchPaths = juce::FileSearchPath (static_cast<const juce::File&> (folder).getFullPathName());
    options.scanner.process.program = juce::File (PX_SCANNER);
    for (const auto expected : { 3, 0 })
    {
        int started = 0;
        auto last = -1.0;
        ScanThread thread (known, options,
                           [&] (const ScanMessage& message)
                           {
                               started += message.kind == ScanMessage::Kind::started ? 1 : 0;
                               EXPECT_GE (message.progress, last);
                               last = message.progress;
                           });
        thread.wait();
        EXPECT_EQ (started, expected);
        EXPECT_EQ (last, 1.0);
        EXPECT_EQ (known->entries().size(), 3u);
    }
    evil.getChildFile ("hang_200.so").copyFileTo (folder.file ("hang_200.so"));
    std::atomic<bool> began { false };
    {
        ScanThread thread (known, options,
                           [&] (const ScanMessage& message)
                           { began = began || message.file.getFileName() == "hang_200.so"; });
        while (!began)
            juce::Thread::yield();
    } // the plug-in hangs, and this returns
    EXPECT_EQ (known->entries().size(), 3u) << "a scan that was broken off marks nothing";
}

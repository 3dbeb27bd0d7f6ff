#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"
#include "offline/set/SetScript.h"
#include "session/report/NoticeLog.h"
#include "session/report/RunReport.h"
#include "settings/SettingNames.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace
{
/** The actions of a set that was written by a journal. */
std::vector<SetScript::Event> linesOf (const std::string& text)
{
    const auto read = parseSetScript (text);
    if (const auto* error = std::get_if<SetScriptError> (&read))
        ADD_FAILURE() << error->sentence << "\n" << text;
    const auto* script = std::get_if<SetScript> (&read);
    return script != nullptr ? script->events : std::vector<SetScript::Event> {};
}

/** The note of a process that dies. @param die   ends it */
juce::String noteOfDeath (void (*die)(), int& status)
{
    const TemporaryFolder folder;
    const auto file = folder.file ("end.txt");
    if (const auto child = fork(); child == 0)
    {
        const CrashNote note (file);
        die();
        _exit (0);
    }
    else
        waitpid (child, &status, 0);
    return file.loadFileAsString();
}

/** True for an end by this signal. A sanitizer handles signals before all others, and ends the process by itself. */
bool isEndBy (int signal, int status)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    if (WIFEXITED (status))
        return WEXITSTATUS (status) != 0;
#endif
    return WIFSIGNALED (status) && WTERMSIG (status) == signal;
}

void writeNowhere()
{
    auto* volatile nowhere = reinterpret_cast<volatile int*> (0x10);
    *nowhere = 1;
}

void throwUncaught()
{
    std::thread ([] { throw std::runtime_error ("no bananas"); })
        .join(); // a test catches what its own thread throws
}

void abortByCheck()
{
    std::abort();
}

void sendSignal()
{
    kill (getpid(), SIGSEGV);
    sleep (10);
}
}

TEST (SystemReport, MasksPathsAndNothingElse)
{
    struct Case
    {
        const char *line, *masked;
    };
    for (const auto& [line, masked] : {
             Case { "", "" },
             Case { "no path 1/8 MP3/WAV 12 / 3", "no path 1/8 MP3/WAV 12 / 3" },
             Case { "/a/b.wav", "(path)" },
             Case { "/a/px_library.sqlite is gone", "(path) is gone" },
             Case { "audioFolder = /home/me/My Music", "audioFolder = (path)" },
             Case { "/home/me/Music/A song.mp3 can't be opened.", "(path) can't be opened." },
             Case { "A: \"/m/x.flac\": no such file", "A: \"(path)\": no such file" },
             Case { "/m/vol. 2/Nr. 5.mp3 is gone", "(path) is gone" },
             Case { "/a/b.wav and /c d/e.wav", "(path) and (path)" },
             Case { "Recorded 3:20 to ~/Music/set.wav", "Recorded 3:20 to ~(path)" },
         })
        EXPECT_EQ (withoutPaths (line), masked) << line;
}

TEST (SystemReport, NamesWhatDiffersAndHidesPathsUnlessAsked)
{
    const TemporaryFolder folder;
    Folders folders;
    folders.root = folder.file ("");
    auto settings = defaultSettings (folders);
    EXPECT_TRUE (changedSettings (settings, folders).isEmpty());
    settings.monitorMix = 0.25;
    SystemReport report;
    report.version = "1.2";
    report.settings = changedSettings (settings, folders);
    report.notices.add ("12:00:00 /music/secret.mp3 can't be opened.");
    EXPECT_EQ (report.settings.joinIntoString ("|"), "monitorMix = 0.25");
    EXPECT_FALSE (report.text (false).contains ("secret"));
    EXPECT_TRUE (report.text (true).contains ("/music/secret.mp3"));
    for (const auto* text :
         { "Platterdex 1.2", "monitorMix = 0.25", "can't be opened.", "[MIDI inputs]\nnone" })
        EXPECT_TRUE (report.text (false).contains (text)) << text;
}

TEST (NoticeLog, KeepsTheLastTwoHundred)
{
    NoticeLog log;
    log.add ({});
    EXPECT_EQ (log.count(), 0u);
    for (int i = 0; i < 300; ++i)
        log.add ("notice " + juce::String (i) + "\nin two lines");
    const auto lines = log.lines();
    ASSERT_EQ (lines.size(), static_cast<int> (NoticeLog::kept));
    EXPECT_TRUE (lines[0].endsWith ("notice 100 in two lines")) << lines[0];
    EXPECT_TRUE (lines[199].endsWith ("notice 299 in two lines")) << lines[199];
    EXPECT_EQ (log.count(), 300u);
}

TEST (SetJournal, WritesLinesThatASetReadsAsTheSame)
{
    HandLog hands;
    SetJournal journal (hands);
    const auto crossfader = CommandTable::numberOf ("CROSSFADER"), jog = CommandTable::numberOf ("JOG_B");
    hands.load ("/a b/c#d.wav", 1);
    hands.command (crossfader, 0.1f, 1.0f, 1.0f);
    hands.command (jog, 66.0f, 0.5f, 1e-7f);
    const auto text = journal.takeLines();
    EXPECT_EQ (journal.takeLines(), "");
    const auto lines = linesOf (text);
    ASSERT_EQ (lines.size(), 3u) << text;
    const auto& load = std::get<SetScript::Load> (lines[0].action);
    EXPECT_EQ (load.deck, 1);
    EXPECT_EQ (load.path, "/a b/c#d.wav");
    const auto& fader = std::get<SetScript::Command> (lines[1].action);
    EXPECT_EQ (fader.number, crossfader);
    EXPECT_EQ (static_cast<float> (fader.value), 0.1f) << "to the bit";
    const auto& wheel = std::get<SetScript::Command> (lines[2].action);
    EXPECT_EQ (wheel.number, jog);
    EXPECT_EQ (static_cast<float> (wheel.arg2), 1e-7f);
}

TEST (SetJournal, EveryCommandAndSettingIsALineOfASet)
{
    HandLog hands;
    SetJournal journal (hands);
    for (int number = 1; number <= CommandTable::commandCount; ++number)
        if (CommandTable::find (number))
            hands.command (number, 1.0f, 1.0f, 1.0f);
    EXPECT_FALSE (linesOf (journal.takeLines()).empty());

    const TemporaryFolder folder;
    Folders folders;
    folders.root = folder.file ("");
    const auto atFirst = defaultSettings (folders);
    auto settings = atFirst;
    size_t changed = 0;
    for (const auto& row : SettingName::all())
        for (int deck = 0; deck < (row.isOfDeck ? 4 : 1) && !row.isText(); ++deck)
        {
            const auto rest = row.read (atFirst, deck);
            row.write (settings, deck, rest == row.highest ? row.lowest : row.highest);
            changed += row.read (settings, deck) != rest ? 1 : 0;
        }
    EXPECT_EQ (linesOf (journal.head (settings, atFirst)).size(), changed);
    EXPECT_TRUE (linesOf (journal.head (atFirst, atFirst)).empty());
}

TEST (SetJournal, CountsWhatCameTooFast)
{
    HandLog hands;
    SetJournal journal (hands);
    for (int i = 0; i < 10000; ++i)
        hands.command (1, 1.0f, 1.0f, 1.0f);
    const auto text = journal.takeLines();
    EXPECT_EQ (linesOf (text).size(), 8192u);
    EXPECT_NE (text.find ("# 1808 actions"), std::string::npos);
    EXPECT_EQ (journal.takeLines(), "");
}

TEST (CrashNote, NamesTheReasonAndLetsTheProcessEndByIt)
{
    struct Case
    {
        void (*die)();
        int signal;
        const char* said;
    };
    for (const auto& [die, signal, said] : {
             Case { writeNowhere, SIGSEGV, "SIGSEGV in the thread \"" },
             Case { sendSignal, SIGSEGV, "SIGSEGV in the thread \"" },
             Case { abortByCheck, SIGABRT, "SIGABRT in the thread \"" },
             Case { throwUncaught, SIGABRT, "An exception that nobody caught: no bananas\nSIGABRT" },
         })
    {
        int status = 0;
        const auto note = noteOfDeath (die, status);
        EXPECT_TRUE (note.startsWith (said)) << note;
        EXPECT_TRUE (isEndBy (signal, status)) << said << ": " << status;
    }
}

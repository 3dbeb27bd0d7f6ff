#include "app/Application.h"

#include "app/ApplicationRun.h"
#include "cli/RootFolder.h"
#include "cli/TerminalOutput.h"
#include "cli/VerbOptions.h"
#include "session/report/NoticeLog.h"
#include "support/language/Translate.h"
#include "ui/WindowPrompts.h"

#include <array>

namespace
{
constexpr int exitNoDisplay = 3;
constexpr int longestRun = 1'000'000;

constexpr std::array options {
    RootFolder::option,
    VerbOption { "--quit-after", "SECONDS", N_ ("ends by itself") },
    VerbOption { "--report", nullptr, N_ ("writes a report on the run at its end") },
    VerbOption { "--help", nullptr, N_ ("this text") },
};

/** True if windows can be opened: the X server that the environment names answers. Asked before anything of JUCE is made,
    which would not survive the lack of one. */
bool isDisplayReachable()
{
    juce::DynamicLibrary x11;
    if (!x11.open ("libX11.so.6"))
        return false;
    const auto open = reinterpret_cast<void* (*)(const char*)> (x11.getFunction ("XOpenDisplay"));
    const auto close = reinterpret_cast<int (*) (void*)> (x11.getFunction ("XCloseDisplay"));
    if (open == nullptr || close == nullptr)
        return false;
    auto* display = open (nullptr);
    if (display == nullptr)
        return false;
    close (display);
    return true;
}

/** The program as JUCE wants to know it. */
class Identity : public juce::JUCEApplicationBase
{
public:
    const juce::String getApplicationName() override { return "Platterdex"; }
    const juce::String getApplicationVersion() override { return PX_VERSION; }
    bool moreThanOneInstanceAllowed() override { return true; }
    void initialise (const juce::String&) override {}
    void shutdown() override {}
    void anotherInstanceStarted (const juce::String&) override {}
    void systemRequestedQuit() override { quit(); }
    void suspended() override {}
    void resumed() override {}
    void unhandledException (const std::exception*, const juce::String&, int) override {}
};
}

int runApplication (const juce::StringArray& arguments)
{
    VerbOptions given (options, arguments);
    const auto seconds = given.wholeNumber ("--quit-after", 0, 0, longestRun);
    if (given.error().isNotEmpty())
        return failWith (given.error());
    if (given.has ("--help"))
    {
        printLine (helpText ("[TRACK...] [--root DIR] [--quit-after SECONDS] [--report]",
                             N_ ("Opens the window, with up to four tracks on the decks A to D."), options));
        return ExitCode::success;
    }
    if (given.positional.size() > deckCount)
        return failWith (tr ("There are four decks: give at most four tracks."));

    if (!isDisplayReachable())
    {
        reportLine ("platterdex: "
                    + tr ("No display can be opened for the window; see platterdex --help for what works "
                          "without one."));
        return exitNoDisplay;
    }
    const auto folders = RootFolder::find (given);
    if (!folders)
        return ExitCode::badInput;

    juce::Array<juce::File> tracks;
    for (const auto& path : given.positional)
        tracks.add (juce::File::getCurrentWorkingDirectory().getChildFile (path));

    juce::JUCEApplicationBase::createInstance = []() -> juce::JUCEApplicationBase* { return new Identity(); };
    const juce::ScopedJuceInitialiser_GUI juceScope;
    const std::unique_ptr<juce::JUCEApplicationBase> identity (juce::JUCEApplicationBase::createInstance());
    const auto notices = std::make_shared<NoticeLog>();
    Session::Options options;
    options.folders = *folders;
    options.library = RootFolder::library (given);
    options.prompts = std::make_shared<LoggedPrompts> (std::make_shared<WindowPrompts>(), notices);
    ApplicationRun run (std::move (options), notices, tracks);
    if (*seconds > 0)
        juce::Timer::callAfterDelay (static_cast<int> (*seconds) * 1000,
                                     [] { juce::JUCEApplicationBase::quit(); });
    juce::MessageManager::getInstance()->runDispatchLoop();
    if (given.has ("--report"))
        printLine (run.report().text (false));
    return ExitCode::success;
}

#include "plugins/scan/ScannerProcess.h"

#include "plugins/ipc/ScannerProtocol.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
constexpr int closeMs = 1000, endMs = 2000;

/** Stands in the environment of scanners. */
constexpr char scannerMark[] = "PLATTERDEX_SCANNER=1";

/** The environment of the scanner: marked, and without the display where it must not show windows. */
std::vector<char*> environmentFor (bool disablePopups)
{
    std::vector<char*> variables;
    for (auto** each = ::environ; each != nullptr && *each != nullptr; ++each)
    {
        const std::string_view text (*each);
        if (!disablePopups || !(text.starts_with ("DISPLAY=") || text.starts_with ("WAYLAND_DISPLAY=")))
            variables.push_back (*each);
    }
    static std::string mark = scannerMark;
    variables.push_back (mark.data());
    variables.push_back (nullptr);
    return variables;
}

/** Starts the program in a process group of its own, without our files and with its words thrown away.
    @returns its number, or -1 */
pid_t spawn (const std::string& program, bool disablePopups, const std::string& mailbox)
{
    posix_spawn_file_actions_t files;
    posix_spawnattr_t attributes;
    posix_spawn_file_actions_init (&files);
    posix_spawnattr_init (&attributes);
    for (const auto descriptor : { STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO })
        posix_spawn_file_actions_addopen (&files, descriptor, "/dev/null", O_RDWR, 0);
    posix_spawn_file_actions_addclosefrom_np (&files, STDERR_FILENO + 1);

    sigset_t none, all;
    sigemptyset (&none);
    sigfillset (&all);
    posix_spawnattr_setsigmask (&attributes, &none);
    posix_spawnattr_setsigdefault (&attributes, &all);
    posix_spawnattr_setpgroup (&attributes, 0);
    posix_spawnattr_setflags (&attributes,
                              POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);

    std::string words[] { program, "scan", disablePopups ? "yes" : "no", mailbox };
    std::vector<char*> arguments;
    for (auto& word : words)
        arguments.push_back (word.data());
    arguments.push_back (nullptr);
    auto environment = environmentFor (disablePopups);
    pid_t process = -1;
    if (posix_spawn (&process, program.c_str(), &files, &attributes, arguments.data(), environment.data())
        != 0)
        process = -1;
    posix_spawnattr_destroy (&attributes);
    posix_spawn_file_actions_destroy (&files);
    return process;
}
}

juce::File ScannerProcess::besideBinary()
{
    return juce::File::getSpecialLocation (juce::File::currentExecutableFile)
        .getSiblingFile ("platterdex-scanner");
}

std::unique_ptr<ScannerProcess> ScannerProcess::start (const Options& options,
                                                       const std::function<bool()>& shouldExit)
{
    auto connection = SimpleInterprocessConnection::make();
    if (connection == nullptr || !options.program.existsAsFile())
        return nullptr;
    const auto process =
        spawn (options.program.getFullPathName().toStdString(), options.disablePopups, connection->name());
    if (process < 0)
        return nullptr;
    std::unique_ptr<ScannerProcess> scanner (new ScannerProcess (process, std::move (connection)));
    for (int look = 0; look < options.startLooks && !shouldExit() && scanner->isAlive(); ++look)
    {
        // The first word comes in a fraction of a second; a long sleep would be waited for once a file that crashes.
        const auto message = [&]
        {
            for (int ms = 0; ms < options.lookMs; ms += 5)
            {
                if (auto text = scanner->connection->receive(); !text.empty())
                    return text;
                juce::Thread::sleep (5);
            }
            return std::string();
        }();
        if (const auto id = ScannerProtocol::processIdIn (message); id == process)
        {
            scanner->connection->removeName(); // both sides have it open now
            return scanner;
        }
    }
    return nullptr;
}

ScannerProcess::ScannerProcess (int process, std::unique_ptr<SimpleInterprocessConnection> c) noexcept
    : processId (process),
      connection (std::move (c))
{
}

ScannerProcess::~ScannerProcess()
{
    kill();
}

bool ScannerProcess::isAlive()
{
    if (hasEnded)
        return false;
    const auto ended = ::waitpid (processId, nullptr, WNOHANG);
    // A host may wait for all children by itself.
    hasEnded = ended == processId || (ended < 0 && ::kill (processId, 0) != 0 && errno == ESRCH);
    return !hasEnded;
}

bool ScannerProcess::kill()
{
    const auto wasAlive = isAlive();
    ::kill (-processId, SIGKILL); // the group: also what a plug-in has started
    if (wasAlive)
        ::waitpid (processId, nullptr, 0);
    hasEnded = true;
    return wasAlive;
}

void ScannerProcess::shutdown()
{
    if (isAlive() && connection->send (ScannerProtocol::close, closeMs))
        for (int ms = 0; ms < endMs && isAlive(); ms += 5)
            juce::Thread::sleep (5);
    kill();
}

#include "session/report/CrashNote.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <string_view>
#include <sys/prctl.h>
#include <ucontext.h>
#include <unistd.h>

extern "C" const char
    __executable_start; // NOLINT(bugprone-reserved-identifier): the linker's own, where the program begins

namespace
{
struct Fatal
{
    int number;
    std::string_view name;
};

constexpr std::array fatal { Fatal { SIGSEGV, "SIGSEGV" }, Fatal { SIGBUS, "SIGBUS" },
                             Fatal { SIGFPE, "SIGFPE" }, Fatal { SIGILL, "SIGILL" },
                             Fatal { SIGABRT, "SIGABRT" } };

// All that the handler needs lies here beforehand: it may neither allocate nor take a lock.
std::array<char, 4096> path;
std::array<struct sigaction, fatal.size()> former;
std::array<char, 65536> stack; ///< for a thread whose own has run out
std::terminate_handler formerTerminate = nullptr;
std::atomic_flag isNoted;

/** A line that is put together without memory from the heap. What does not fit is cut. */
class Line
{
public:
    Line& operator<< (std::string_view text) noexcept
    {
        const auto taken = std::min (text.size(), bytes.size() - length);
        std::memcpy (bytes.data() + length, text.data(), taken);
        length += taken;
        return *this;
    }

    Line& operator<< (uintptr_t address) noexcept
    {
        std::array<char, 20> digits;
        const auto end = std::to_chars (digits.data(), digits.data() + digits.size(), address, 16).ptr;
        return *this << "0x" << std::string_view (digits.data(), static_cast<size_t> (end - digits.data()));
    }

    void write() noexcept
    {
        *this << "\n";
        const auto file = open (path.data(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
        if (file < 0)
            return;
        if (::write (file, bytes.data(), length) < 0)
            length = 0; // a full disk: there is nobody to tell
        close (file);
    }

private:
    std::array<char, 1024> bytes;
    size_t length = 0;
};

uintptr_t programCounter (const void* context) noexcept
{
    const auto& machine = static_cast<const ucontext_t*> (context)->uc_mcontext;
#if defined(__x86_64__)
    return static_cast<uintptr_t> (machine.gregs[REG_RIP]);
#elif defined(__aarch64__)
    return machine.pc;
#else
    return 0;
#endif
}

void note (int number, const siginfo_t* info, const void* context) noexcept
{
    Line line;
    for (const auto& each : fatal)
        if (each.number == number)
            line << each.name;
    std::array<char, 16> thread {};
    prctl (PR_GET_NAME, thread.data());
    line << " in the thread \"" << std::string_view (thread.data(), strnlen (thread.data(), thread.size()))
         << "\", address " << reinterpret_cast<uintptr_t> (info->si_addr) << ", program counter "
         << programCounter (context) << ", the program begins at "
         << reinterpret_cast<uintptr_t> (&__executable_start);
    line.write();
}

void onSignal (int number, siginfo_t* info, void* context)
{
    if (!isNoted.test_and_set())
        note (number, info, context);
    // The instruction that failed fails again, and abort() raises its signal again: whoever was asked before is asked now.
    for (size_t i = 0; i < fatal.size(); ++i)
        if (fatal[i].number == number)
            sigaction (number, &former[i], nullptr);
    if (info->si_code <= 0 && number != SIGABRT)
        raise (number); // it was sent, and comes by itself no second time
}

[[noreturn]] void onTerminate()
{
    Line line;
    line << "An exception that nobody caught";
    try
    {
        if (const auto thrown = std::current_exception())
            std::rethrow_exception (thrown);
    }
    catch (const std::exception& exception)
    {
        line << ": " << std::string_view (exception.what());
    }
    catch (...)
    {
        line << " of a type of its own";
    }
    line.write();
    if (formerTerminate != nullptr)
        formerTerminate();
    std::abort();
}
}

CrashNote::CrashNote (const juce::File& file)
{
    file.getFullPathName().copyToUTF8 (path.data(), path.size());
    isNoted.clear();
    stack_t own {};
    own.ss_sp = stack.data();
    own.ss_size = stack.size();
    sigaltstack (&own, nullptr);
    struct sigaction action
    {
    };
    action.sa_sigaction = onSignal;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigemptyset (&action.sa_mask);
    for (size_t i = 0; i < fatal.size(); ++i)
        sigaction (fatal[i].number, &action, &former[i]);
    formerTerminate = std::set_terminate (onTerminate);
}

CrashNote::~CrashNote()
{
    std::set_terminate (formerTerminate);
    for (size_t i = 0; i < fatal.size(); ++i)
        sigaction (fatal[i].number, &former[i], nullptr);
    stack_t none {};
    none.ss_flags = SS_DISABLE;
    sigaltstack (&none, nullptr);
}

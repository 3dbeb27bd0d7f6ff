#include "plugins/ipc/SimpleInterprocessConnection.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <random>
#include <thread>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
using Connection = SimpleInterprocessConnection;

std::atomic_ref<uint32_t> lengthIn (std::byte* box) noexcept
{
    return std::atomic_ref<uint32_t> (*reinterpret_cast<uint32_t*> (box));
}

/** "/platterdex-USER-": the process and a random number follow. */
std::string namePrefix()
{
    return "/platterdex-" + std::to_string (::getuid()) + "-";
}

std::byte* mapped (int descriptor) noexcept
{
    auto* const memory =
        ::mmap (nullptr, Connection::sharedBytes, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    return memory != MAP_FAILED ? static_cast<std::byte*> (memory) : nullptr;
}

bool hasEnded (pid_t process) noexcept
{
    return ::kill (process, 0) != 0 && errno == ESRCH;
}
}

Connection::SimpleInterprocessConnection (std::string name, Side s, std::byte* m) noexcept
    : memoryName (std::move (name)),
      side (s),
      memory (m),
      hasName (s == Side::master)
{
}

Connection::~SimpleInterprocessConnection()
{
    removeName();
    ::munmap (memory, sharedBytes);
}

std::unique_ptr<Connection> Connection::make()
{
    constexpr int tries = 16;
    std::random_device random;
    for (int i = 0; i < tries; ++i)
    {
        auto name = namePrefix() + std::to_string (::getpid()) + "-" + std::to_string (random());
        const auto descriptor = ::shm_open (name.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, 0600);
        if (descriptor < 0)
            continue;
        auto* const memory =
            ::ftruncate (descriptor, static_cast<off_t> (sharedBytes)) == 0 ? mapped (descriptor) : nullptr;
        ::close (descriptor);
        if (memory != nullptr)
            return std::unique_ptr<Connection> (
                new SimpleInterprocessConnection (std::move (name), Side::master, memory));
        ::shm_unlink (name.c_str());
    }
    return nullptr;
}

std::unique_ptr<Connection> Connection::open (const std::string& name, Side side)
{
    const auto descriptor = ::shm_open (name.c_str(), O_RDWR | O_CLOEXEC, 0);
    if (descriptor < 0)
        return nullptr;
    struct stat status = {};
    const auto fits = ::fstat (descriptor, &status) == 0 && status.st_uid == ::geteuid()
                      && (status.st_mode & 077) == 0 && status.st_size == static_cast<off_t> (sharedBytes);
    auto* const memory = fits ? mapped (descriptor) : nullptr;
    ::close (descriptor);
    if (memory == nullptr)
        return nullptr;
    std::unique_ptr<Connection> opened (new SimpleInterprocessConnection (name, side, memory));
    opened->hasName = false; // whoever made it removes it
    return opened;
}

bool Connection::send (std::string_view text, int timeoutMs)
{
    if (text.size() + 1 > messageBytes)
        return false;
    const std::scoped_lock lock (sending);
    const auto length = lengthIn (outbox());
    for (int tries = 0; length.load (std::memory_order_acquire) != 0; ++tries)
    {
        if (tries >= timeoutMs)
            return false;
        std::this_thread::sleep_for (std::chrono::milliseconds (1));
    }
    auto* const bytes = outbox() + sizeof (uint32_t);
    std::memcpy (bytes, text.data(), text.size());
    bytes[text.size()] = std::byte { 0 };
    length.store (static_cast<uint32_t> (text.size() + 1), std::memory_order_release);
    return true;
}

std::string Connection::receive()
{
    const auto length = lengthIn (inbox());
    const auto bytes = std::min<size_t> (length.load (std::memory_order_acquire), messageBytes);
    if (bytes == 0)
        return {};
    const auto* const text = reinterpret_cast<const char*> (inbox() + sizeof (uint32_t));
    std::string message (text, ::strnlen (text, bytes));
    length.store (0, std::memory_order_release);
    return message;
}

void Connection::clear() noexcept
{
    std::memset (memory, 0, sharedBytes);
}

void Connection::removeName() noexcept
{
    if (hasName)
        ::shm_unlink (memoryName.c_str());
    hasName = false;
}

int Connection::makerOf (std::string_view name)
{
    const auto prefix = namePrefix();
    if (name.starts_with ('/'))
        name.remove_prefix (1);
    if (!name.starts_with (std::string_view (prefix).substr (1)))
        return 0;
    name.remove_prefix (prefix.size() - 1);
    pid_t process = 0;
    std::from_chars (name.data(), name.data() + name.size(), process);
    return process;
}

int Connection::removeLeftovers()
{
    int removed = 0;
    std::error_code fault;
    for (std::filesystem::directory_iterator entry ("/dev/shm", fault), end; !fault && entry != end;
         entry.increment (fault))
    {
        const auto name = entry->path().filename().string();
        if (const auto process = makerOf (name);
            process > 0 && hasEnded (process) && ::shm_unlink (("/" + name).c_str()) == 0)
            ++removed;
    }
    return removed;
}

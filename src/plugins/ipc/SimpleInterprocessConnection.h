#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

/** A mailbox of shared memory between two processes: one message each way at a time, without a lock between them.

    The sender stores a message's length last and the receiver clears it last, so the length word hands the bytes over. What
    the other side writes is not trusted: a length is clipped to the mailbox. The memory's name belongs to one user and one
    run of the program and is removed once both sides have opened it, so that nothing stays behind. */
class SimpleInterprocessConnection
{
public:
    static constexpr size_t messageBytes = 1'000'000, boxBytes = sizeof (uint32_t) + messageBytes,
                            sharedBytes = 2 * boxBytes;

    enum class Side
    {
        master,
        scanner
    };

    /** Makes the memory, under a name that nobody has, readable by this user alone; for the master.
        @returns null if the system gives none */
    static std::unique_ptr<SimpleInterprocessConnection> make();

    /** Opens the memory that another process has made. @returns null if there is none of that name and size */
    static std::unique_ptr<SimpleInterprocessConnection> open (const std::string& name, Side);

    ~SimpleInterprocessConnection();
    SimpleInterprocessConnection (const SimpleInterprocessConnection&) = delete;
    SimpleInterprocessConnection& operator= (const SimpleInterprocessConnection&) = delete;

    /** Waits until the other side has taken the last message, looking each millisecond, and hands over the next.
        @param text        UTF-8 without zeros; it is sent with a closing one
        @param timeoutMs   tries, 1 ms apart
        @returns false if the message and its zero are longer than the mailbox, or the other side took nothing */
    bool send (std::string_view text, int timeoutMs);

    /** Takes the message that has come. @returns an empty text if there is none */
    std::string receive();

    /** Sets all of the memory to zero. */
    void clear() noexcept;

    /** Removes the memory's name; both sides keep what they have opened. */
    void removeName() noexcept;

    const std::string& name() const noexcept { return memoryName; }

    /** The number of the process that has made a memory. @param name   with or without its leading slash
        @returns 0 if it is no name of this user's */
    static int makerOf (std::string_view name);

    /** Removes the memory that dead processes of this user have left. @returns the number of names removed */
    static int removeLeftovers();

private:
    SimpleInterprocessConnection (std::string name, Side, std::byte* memory) noexcept;

    std::byte* outbox() const noexcept { return memory + (side == Side::master ? 0 : boxBytes); }
    std::byte* inbox() const noexcept { return memory + (side == Side::master ? boxBytes : 0); }

    const std::string memoryName;
    const Side side;
    std::byte* const memory;
    bool hasName;
    std::mutex sending;
};

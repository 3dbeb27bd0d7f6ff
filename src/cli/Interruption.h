#pragma once

#include <array>
#include <csignal>

/** Lives on the stack of a verb that ends well when the user breaks it off: SIGINT and SIGTERM are noted instead of
    ending the process. One object at a time. */
class Interruption
{
public:
    Interruption();
    ~Interruption();
    Interruption (const Interruption&) = delete;
    Interruption& operator= (const Interruption&) = delete;

    bool isInterrupted() const noexcept;

private:
    static constexpr std::array signals { SIGINT, SIGTERM };
    std::array<void (*) (int), signals.size()> former {};
};

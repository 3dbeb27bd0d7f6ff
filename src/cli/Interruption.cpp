#include "cli/Interruption.h"

namespace
{
volatile std::sig_atomic_t interrupted = 0;
}

Interruption::Interruption()
{
    interrupted = 0;
    for (size_t i = 0; i < signals.size(); ++i)
        former[i] = std::signal (signals[i], [] (int) { interrupted = 1; });
}

Interruption::~Interruption()
{
    for (size_t i = 0; i < signals.size(); ++i)
        std::signal (signals[i], former[i]);
}

bool Interruption::isInterrupted() const noexcept
{
    return interrupted != 0;
}

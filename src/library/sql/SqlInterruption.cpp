#include "library/sql/SqlInterruption.h"

#include <utility>

namespace
{
thread_local const SqlInterruption* current = nullptr;
}

SqlInterruption::SqlInterruption (std::stop_token t) : token (std::move (t)), outer (current)
{
    current = this;
}

SqlInterruption::~SqlInterruption()
{
    current = outer;
}

bool SqlInterruption::isDue()
{
    return current != nullptr && current->token.stop_requested();
}

#pragma once

/** The memory of the arrays of all scripts. An array that would go beyond it fails with an exception in its script: a loop
    that lets one grow must not take the memory of the whole program. */
namespace ArrayMemory
{
inline constexpr unsigned long mostPerArray = 64ul << 20, mostTogether = 256ul << 20; ///< bytes

/** Sets the limits, for the process. Before the first script engine is made; more than once does nothing. */
void limit();
}

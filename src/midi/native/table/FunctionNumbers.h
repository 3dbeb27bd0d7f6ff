#pragma once

#include "midi/native/table/FunctionRows.h"

/** @returns the number of a function's command or meter for a deck, 0 for a function without one. Any thread */
int commandOf (const Function&, int deck) noexcept;

#pragma once

#include <string_view>

/** The number of a command by its constant. @param constant   one that ends in an underscore gets the deck's letter
    @param deck   0 to 3; any for a constant without a deck
    @returns 0 if there is none */
int commandNumberOf (std::string_view constant, int deck);

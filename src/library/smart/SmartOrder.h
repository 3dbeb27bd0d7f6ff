#pragma once

#include "support/language/Translate.h"

#include <array>
#include <string_view>

/** The order by which a limited smart playlist selects, as the editor offers it. */
struct SmartOrder
{
    const char* text;
    const char* column;
    bool ascending;
};

inline constexpr const char* randomOrder = "RANDOM()";

/** By the index in the editor's box. */
inline constexpr std::array<SmartOrder, 9> smartOrders { {
    { N_ ("random"), randomOrder, true },
    { N_ ("highest rating"), "rating", false },
    { N_ ("lowest rating"), "rating", true },
    { N_ ("most recently played"), "lastplayed", false },
    { N_ ("least recently played"), "lastplayed", true },
    { N_ ("most often played"), "playcount", false },
    { N_ ("least often played"), "playcount", true },
    { N_ ("most recently added"), "dateadded", false },
    { N_ ("least recently added"), "dateadded", true },
} };

/** The index of an order, 0 for an unknown one. */
constexpr size_t orderIndexOf (std::string_view column, bool ascending)
{
    for (size_t i = 0; i < smartOrders.size(); ++i)
        if (column == smartOrders[i].column && ascending == smartOrders[i].ascending)
            return i;
    return 0;
}

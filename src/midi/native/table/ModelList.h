#pragma once

#include "midi/native/table/ModelTable.h"

/** The controllers that the system knows by number. */
namespace ModelList
{
inline constexpr int count = 50;

/** The way in which a model is served. */
enum class Support : uint8_t
{
    native,   ///< by its table
    mapping,  ///< by the mapping alone
    namesOnly ///< by the mapping, for which its controls have names
};

struct Entry
{
    const char* name;
    const Model* table = nullptr; ///< null for a model without one
    Support support = Support::mapping;
    int pauseMs = 0;          ///< after each message, for a device that loses them at full speed
    const char* remark = "";  ///< of a model without a table: one sentence for lists
    const char* facts = "";   ///< likewise: what is known all the same, for its page
    bool clearsCache = false; ///< likewise: has the mapping's lamps painted anew when it is selected
};

/** The controls of a model whose functions are not known, by their names; empty for others. Any thread */
std::span<const NamedControl> namedControls (int model) noexcept;

/** The name of a control whose function is not known; empty for others. Any thread */
std::string_view controlName (int model, int status, int data) noexcept;

/** @returns entry 0, the generic controller, for a number that is none. Any thread */
const Entry& entry (int model) noexcept;
}

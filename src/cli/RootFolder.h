#pragma once

#include "cli/VerbOptions.h"
#include "settings/Folders.h"

#include <optional>

/** The folder below which the program keeps its files. */
namespace RootFolder
{
inline constexpr VerbOption option {
    "--root", "DIR", "the folder of settings, tracks and recordings (PLATTERDEX_ROOT, or beside the program)"
};

/** @returns nothing after a report: the folder can't be made or written */
std::optional<Folders> find (const VerbOptions&);
}

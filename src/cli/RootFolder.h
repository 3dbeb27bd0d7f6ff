#pragma once

#include "cli/VerbOptions.h"
#include "session/LibrarySession.h"
#include "settings/Folders.h"
#include "support/language/Translate.h"

#include <optional>

/** The folder below which the program keeps its files. */
namespace RootFolder
{
inline constexpr VerbOption option {
    "--root", "DIR",
    N_ ("the folder of settings, library, tracks and recordings (PLATTERDEX_ROOT, or beside the program)")
};

inline constexpr VerbOption libraryOption { "--library", "FILE",
                                            N_ ("the library's file (below --root, or the user's library)") };

/** The folders that arguments name, before anything else is read of them; nothing is made. */
Folders named (const juce::StringArray& arguments);

/** @returns nothing after a report: the folder can't be made or written */
std::optional<Folders> find (const VerbOptions&);

/** The library of --library, else the one below --root, else the user's. */
LibraryPlace library (const VerbOptions&);
}

#pragma once

#include "cli/RootFolder.h"
#include "library/database/SongDatabase.h"
#include "library/import/ImportFiles.h"
#include "session/Session.h"

#include <limits>
#include <optional>
#include <span>

/** Functions that the verbs on the library share. Each reports what is wrong by itself and gives nothing then;
    the verb ends with ExitCode::badInput. */
namespace LibraryVerb
{
using Use = LibrarySession::Use;

/** One thing that a verb of several can do: "playlist add NAME PATH...". */
struct Action
{
    const char* name;
    const char* arguments; ///< for the help and for reports: "NAME PATH..."
    const char* help;      ///< one line
    int least, most;       ///< how many arguments
    Use use;

    /** @param given   without the action's own name. @returns the exit code */
    int (*run) (SongDatabase&, VerbOptions& given);
};

inline constexpr int anyNumber = std::numeric_limits<int>::max();

/** Runs the action that the first argument names. */
int runAction (const char* verb, const char* description, std::span<const Action>,
               std::span<const VerbOption>, const juce::StringArray& arguments);

/** A session on the library of --library, else below --root, else the user's, which is open. */
std::unique_ptr<Session> open (const VerbOptions&, Use);

/** The one playlist or smart playlist with a name. */
std::optional<SourceItem> findPlaylist (SongDatabase&, SongListKind, const juce::String& name);

/** True if a new list may be called so: the verbs know lists by their names. */
bool isNameFree (SongDatabase&, SongListKind, const juce::String& name);

/** The sort order behind all others of the kind. */
int32_t lastPlace (SongDatabase&, SongListKind);

/** All lists of the kind, each with its number of songs. */
int printPlaylists (SongDatabase&, SongListKind, VerbOptions& given);

/** The songs of the list that the first argument names; of the automix list without one. */
int showPlaylist (SongDatabase&, SongListKind, VerbOptions& given);

/** Gives the list that the first argument names the second as its name. */
int renamePlaylist (SongDatabase&, SongListKind, VerbOptions& given);

/** Deletes the list that the first argument names; its songs stay in the library. */
int deletePlaylist (SongDatabase&, SongListKind, VerbOptions& given);

/** One of the functions above as an action of a kind of list. */
template <int (*function) (SongDatabase&, SongListKind, VerbOptions&), SongListKind kind>
int onList (SongDatabase& database, VerbOptions& given)
{
    return function (database, kind, given);
}

/** Files and folders, seen from the current folder, that can be imported. @returns their full paths */
std::optional<juce::StringArray> importablePaths (const juce::StringArray& arguments);

/** Imports the files and folders that the arguments name. @returns the exit code */
int importArguments (SongDatabase&, const juce::StringArray& arguments, const ImportFiles::Target&);

/** A sentence for the code that ended an import. */
juce::String whyNotStored (int code);

/** Imports, watched on the terminal, and prints the outcome in one line. @returns the exit code */
int importPaths (SongDatabase&, const juce::StringArray& paths, const ImportFiles::Target&);

/** Ends with a line on what was done, or with a report if the operation gave a code other than 0. */
int ended (int code, const juce::String& done);

/** "1 song", "2 songs". */
juce::String songs (int count);
}

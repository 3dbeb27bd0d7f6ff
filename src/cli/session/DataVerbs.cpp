#include "cli/RootFolder.h"
#include "cli/TerminalOutput.h"
#include "cli/TerminalProgress.h"
#include "cli/VerbOptions.h"
#include "cli/Verbs.h"
#include "session/RootLock.h"
#include "session/archive/DataArchive.h"
#include "support/language/Translate.h"

#include <array>

namespace
{
constexpr VerbOption helpOption { "--help", nullptr, N_ ("this text") };

constexpr std::array backupOptions {
    VerbOption { "--audio", nullptr, N_ ("puts recordings and imported tracks into it too") },
    RootFolder::option,
    RootFolder::libraryOption,
    helpOption,
};

constexpr std::array restoreOptions { RootFolder::option, RootFolder::libraryOption, helpOption };

juce::String filesText (int count)
{
    return trPlural ("%1 file", "%1 files", count);
}

/** @returns nothing after a report */
std::optional<juce::File> archiveOf (const char* verb, const VerbOptions& given)
{
    if (given.positional.size() == 1)
        return juce::File::getCurrentWorkingDirectory().getChildFile (given.positional[0]);
    failWith (tr ("%1 needs one file; see platterdex %1 --help.", verb));
    return {};
}

int backUp (const VerbOptions& given)
{
    const auto archive = archiveOf ("backup", given);
    if (!archive)
        return ExitCode::badInput;
    if (!archive->hasFileExtension ("tar.gz;tgz"))
        return failWith (tr ("backup writes .tar.gz, not %1.", archive->getFileName().quoted()));
    const auto folders = RootFolder::find (given);
    if (!folders)
        return ExitCode::badInput;
    DataArchive::Outcome outcome;
    {
        TerminalProgress progress;
        outcome = DataArchive::write (*folders, RootFolder::library (given).file(), *archive,
                                      given.has ("--audio") ? DataArchive::Audio::included
                                                            : DataArchive::Audio::leftOut,
                                      PX_VERSION, progress);
    }
    if (outcome.fault.isNotEmpty())
        return failWith (outcome.fault);
    printLine (tr ("Wrote %1 to %2.", filesText (outcome.files), archive->getFullPathName()));
    return ExitCode::success;
}

int restore (const VerbOptions& given)
{
    const auto archive = archiveOf ("restore", given);
    if (!archive)
        return ExitCode::badInput;
    if (!archive->existsAsFile())
        return failWith (tr ("%1 does not exist.", archive->getFullPathName()));
    const auto folders = RootFolder::find (given);
    if (!folders)
        return ExitCode::badInput;
    RootLock lock (folders->setup());
    if (!lock.take())
        return failWith (tr ("Another program has the folder %1 in use; close it first.",
                             folders->root.getFullPathName()));
    auto library = RootFolder::library (given).file();
    library.prepare (LibraryFile::Purpose::reading);
    DataArchive::Outcome outcome;
    {
        TerminalProgress progress;
        outcome = DataArchive::restore (*archive, *folders, library, progress);
    }
    if (outcome.fault.isNotEmpty())
        return failWith (outcome.fault);
    printLine (tr ("Restored %1 in %2.", filesText (outcome.files), folders->root.getFullPathName()));
    if (outcome.former != juce::File())
        printLine (tr ("What they replaced is kept in %1.", outcome.former.getFullPathName()));
    if (outcome.hasLibrary)
        printLine (
            tr ("The library is %1; the former one is kept beside it.", library.file().getFullPathName()));
    return ExitCode::success;
}

int run (const juce::StringArray& arguments, std::span<const VerbOption> options, const char* usage,
         const char* description, int (*work) (const VerbOptions&))
{
    const VerbOptions given (options, arguments);
    if (given.has ("--help"))
    {
        printLine (helpText (usage, description, options));
        return ExitCode::success;
    }
    return given.error().isNotEmpty() ? failWith (given.error()) : work (given);
}
}

int runBackup (const juce::StringArray& arguments)
{
    return run (
        arguments, backupOptions, "backup FILE.tar.gz [--audio] [--root DIR] [--library FILE]",
        N_ ("Puts settings, mappings, presets, samples, playlists, analysis and the library with its history "
            "into one file.\nThe program may run meanwhile. The songs themselves stay where they are."),
        backUp);
}

int runRestore (const juce::StringArray& arguments)
{
    return run (arguments, restoreOptions, "restore FILE.tar.gz [--root DIR] [--library FILE]",
                N_ ("Puts what a backup holds in its place. What was there before is kept beside it.\nThe "
                    "program must "
                    "not run meanwhile. A damaged file changes nothing."),
                restore);
}

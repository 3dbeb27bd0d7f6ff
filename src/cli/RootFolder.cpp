#include "cli/RootFolder.h"

#include "cli/TerminalOutput.h"
#include "support/language/Translate.h"

std::optional<Folders> RootFolder::find (const VerbOptions& given)
{
    Folders folders;
    if (given.has (option.name))
        folders.root = given.fileOf (option.name);
    else
        folders = Folders::ofProcess();
    if (folders.root.createDirectory().wasOk() && folders.root.hasWriteAccess())
        return folders;
    failWith (tr ("The folder %1 can't be made or written.", folders.root.getFullPathName()));
    return {};
}

Folders RootFolder::named (const juce::StringArray& arguments)
{
    const auto at = arguments.indexOf (option.name);
    if (at < 0 || at + 1 >= arguments.size())
        return Folders::ofProcess();
    Folders folders;
    folders.root = juce::File::getCurrentWorkingDirectory().getChildFile (arguments[at + 1]);
    return folders;
}

LibraryPlace RootFolder::library (const VerbOptions& given)
{
    LibraryPlace place;
    if (given.has (libraryOption.name))
        place.named = given.fileOf (libraryOption.name);
    else if (given.has (option.name))
        place.folder = given.fileOf (option.name).getChildFile ("SongManager");
    return place;
}

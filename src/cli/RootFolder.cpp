#include "cli/RootFolder.h"

#include "cli/TerminalOutput.h"

std::optional<Folders> RootFolder::find (const VerbOptions& given)
{
    const auto ofEnvironment = juce::SystemStats::getEnvironmentVariable ("PLATTERDEX_ROOT", {});
    if (!given.has (option.name) && ofEnvironment.isEmpty())
        return Folders::ofPlugin();
    Folders folders;
    folders.root = given.has (option.name)
                       ? given.fileOf (option.name)
                       : juce::File::getCurrentWorkingDirectory().getChildFile (ofEnvironment);
    if (folders.root.createDirectory().wasOk() && folders.root.hasWriteAccess())
        return folders;
    failWith ("The folder " + folders.root.getFullPathName() + " can't be made or written.");
    return {};
}

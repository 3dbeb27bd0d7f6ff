#include "settings/Folders.h"

#include "support/AudioThread.h"
#include "support/files/OwnBinary.h"

namespace
{
/** The bundle that a plug-in file lies in, or the file itself. */
juce::File bundleOf (const juce::File& pluginFile)
{
    for (auto folder = pluginFile.getParentDirectory(); folder != folder.getParentDirectory();
         folder = folder.getParentDirectory())
        // "~/.lv2" is where bundles are installed, not one of them.
        if (folder.hasFileExtension ("vst3;lv2;vst;component")
            && folder.getFileNameWithoutExtension() != folder.getFileName())
            return folder;
    return pluginFile;
}

/** True below the system's folders, and in one that hosts search for plug-ins or in a maker's folder there: each host would
    complain of every folder that is no plug-in. */
bool isForeign (const juce::File& folder)
{
    for (const auto* system : { "/usr", "/opt" })
        if (folder.isAChildOf (juce::File (system)))
            return true;
    const auto isSearched = [] (const juce::File& each)
    {
        static const juce::StringArray names { "vst", "vst3", "lv2", "lxvst" };
        return names.contains (each.getFileName().trimCharactersAtStart ("."), true);
    };
    return isSearched (folder) || isSearched (folder.getParentDirectory());
}

/** Tries it: permission bits say nothing of a read-only medium, and nothing at all to an administrator. */
bool canMakeFilesIn (const juce::File& folder)
{
    if (!folder.isDirectory())
        return false;
    const auto probe = folder.getChildFile (".platterdex-" + juce::Uuid().toString());
    return probe.create().wasOk() && probe.deleteFile();
}
}

Folders Folders::ofPlugin (const juce::File& pluginFile, const juce::File& userData)
{
    assertMayBlock();
    const auto beside = bundleOf (pluginFile).getParentDirectory();
    Folders folders;
    folders.root =
        !isForeign (beside) && canMakeFilesIn (beside) ? beside : userData.getChildFile ("Platterdex2");
    return folders;
}

Folders Folders::ofProcess()
{
    const auto named = juce::SystemStats::getEnvironmentVariable ("PLATTERDEX_ROOT", {});
    if (named.isEmpty())
        return ofPlugin (ownBinary());
    Folders folders;
    folders.root = juce::File::getCurrentWorkingDirectory().getChildFile (named);
    return folders;
}

juce::File Folders::itunesLibrary() const
{
    const juce::String name ("iTunes Music Library.xml");
    return music.isDirectory() ? music.getChildFile ("iTunes").getChildFile (name) : root.getChildFile (name);
}

bool Folders::createAll() const
{
    assertMayBlock();
    auto allThere = true;
    for (const auto& folder :
         { setup(), scriptFiles(), beatmarks(), languages(), audio(), samples(), midiFiles(), vstPlugins(),
           playlists(), diskRecorder(), slicegateFiles(), smartknobFiles(), controlCd() })
        allThere = folder.createDirectory().wasOk() && allThere;
    return allThere;
}

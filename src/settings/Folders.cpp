#include "settings/Folders.h"

#include "support/AudioThread.h"

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
    folders.root = canMakeFilesIn (beside) ? beside : userData.getChildFile ("Platterdex2");
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

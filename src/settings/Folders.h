#pragma once

#include <juce_core/juce_core.h>

/** The folders of the application's files: one root with fixed folders below it. */
struct Folders
{
    juce::File root;

    /** The user's music folder; only the default place of the iTunes library depends on it. */
    juce::File music = juce::File::getSpecialLocation (juce::File::userMusicDirectory);

    /** The folders of an installed plug-in or application. The root is the folder that holds the plug-in file; where
        that lies in a bundle, the folder that holds the bundle, so that replacing the bundle loses nothing. Where hosts
        search for plug-ins or the system keeps its programs, and where no file can be made, the root is "Platterdex2"
        below `userData`. Not on the audio thread. */
    static Folders ofPlugin (
        const juce::File& pluginFile = juce::File::getSpecialLocation (juce::File::currentExecutableFile),
        const juce::File& userData =
            juce::File::getSpecialLocation (juce::File::userApplicationDataDirectory));

    /** The folders that all faces of the program share: PLATTERDEX_ROOT, or those of ofPlugin(). */
    static Folders ofProcess();

    juce::File setup() const { return below ("setup"); }
    juce::File scriptFiles() const { return below ("script_files"); }
    juce::File beatmarks() const { return below ("beatmarks"); }
    juce::File languages() const { return below ("languages"); }
    juce::File audio() const { return below ("audio"); }
    juce::File samples() const { return below ("samples"); }
    juce::File midiFiles() const { return below ("midi_files"); }
    juce::File vstPlugins() const { return below ("vst_plugins"); }
    juce::File playlists() const { return below ("playlists"); }
    juce::File diskRecorder() const { return below ("disk_recorder"); }
    juce::File slicegateFiles() const { return below ("slicegate_files"); }
    juce::File smartknobFiles() const { return below ("smartknob_files"); }
    juce::File controlCd() const { return below ("control_cd"); }

    /** The default place of the iTunes library: in the music folder, or below the root if there is none. */
    juce::File itunesLibrary() const;

    /** Makes every folder that is missing. @returns false if one could not be made. Not on the audio thread. */
    bool createAll() const;

private:
    juce::File below (const char* name) const { return root.getChildFile (name); }
};

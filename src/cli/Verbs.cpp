#include "cli/Verbs.h"

#include <array>

namespace
{
constexpr std::array verbs {
    Verb { "perform", "plays a set of timed lines into WAV files, faster than real time", runPerform },
    Verb { "analyse", "finds tempo, beats and loudness of files and folders, and keeps them", runAnalyse },
    Verb { "mix", "mixes tracks into a WAV file, faster than real time", runMix },
    Verb { "import", "brings files and folders into the library", runImport },
    Verb { "remove", "takes songs out of the library; their files stay", runRemove },
    Verb { "relocate", "finds files again that were moved or renamed", runRelocate },
    Verb { "list", "prints songs of the library", runList },
    Verb { "history", "prints what was played, session by session", runHistory },
    Verb { "playlist", "makes, fills and shows playlists", runPlaylist },
    Verb { "smart", "makes and shows smart playlists", runSmart },
    Verb { "automix", "shows, fills and clears the automix list", runAutomix },
    Verb { "similar", "prints the songs of the library that fit a file: by sound, tempo and key",
           runSimilar },
    Verb { "export", "writes a list as M3U or as a web page", runExport },
    Verb { "snapshot", "paints the window into a PNG file, without a display", runSnapshot },
    Verb { "midi", "lists the MIDI ports, or shows what they receive", runMidi },
    Verb { "controllers", "lists the known MIDI controllers, and what their controls do", runControllers },
    Verb { "script", "builds scripts for MIDI controllers and prints their errors", runScript },
    Verb { "timecode", "decodes a recorded control signal into speeds and positions", runTimecode },
    Verb { "control-cd", "writes the control disc into a WAV file", runControlCd },
    Verb { "plugins", "scans folders for plug-ins and lists those that are known", runPlugins },
    Verb { "commands", "prints the table of commands", runCommands },
    Verb { "settings", "lists the settings, their values and their meaning", runSettings },
    Verb { "presets", "prints the presets of pads and SmartKnobs", runPresets },
    Verb { "demo-tracks", "writes the demo tracks into a folder", runDemoTracks },
};
}

std::span<const Verb> allVerbs()
{
    return verbs;
}

#include "cli/Verbs.h"

#include "support/language/Translate.h"

#include <array>

namespace
{
constexpr std::array verbs {
    Verb { "perform", N_ ("plays a set of timed lines into WAV files, faster than real time"), runPerform },
    Verb { "analyse", N_ ("finds tempo, beats and loudness of files and folders, and keeps them"),
           runAnalyse },
    Verb { "mix", N_ ("mixes tracks into a WAV file, faster than real time"), runMix },
    Verb { "import", N_ ("brings files and folders into the library"), runImport },
    Verb { "remove", N_ ("takes songs out of the library; their files stay"), runRemove },
    Verb { "relocate", N_ ("finds files again that were moved or renamed"), runRelocate },
    Verb { "list", N_ ("prints songs of the library"), runList },
    Verb { "history", N_ ("prints what was played, session by session"), runHistory },
    Verb { "playlist", N_ ("makes, fills and shows playlists"), runPlaylist },
    Verb { "smart", N_ ("makes and shows smart playlists"), runSmart },
    Verb { "automix", N_ ("shows, fills and clears the automix list"), runAutomix },
    Verb { "similar", N_ ("prints the songs of the library that fit a file: by sound, tempo and key"),
           runSimilar },
    Verb { "export", N_ ("writes a list as M3U or as a web page"), runExport },
    Verb { "snapshot", N_ ("paints the window into a PNG file, without a display"), runSnapshot },
    Verb { "midi", N_ ("lists the MIDI ports, or shows what they receive"), runMidi },
    Verb { "controllers", N_ ("lists the known MIDI controllers, and what their controls do"),
           runControllers },
    Verb { "script", N_ ("builds scripts for MIDI controllers and prints their errors"), runScript },
    Verb { "timecode", N_ ("decodes a recorded control signal into speeds and positions"), runTimecode },
    Verb { "control-cd", N_ ("writes the control disc into a WAV file"), runControlCd },
    Verb { "plugins", N_ ("scans folders for plug-ins and lists those that are known"), runPlugins },
    Verb { "commands", N_ ("prints the table of commands"), runCommands },
    Verb { "settings", N_ ("lists the settings, their values and their meaning"), runSettings },
    Verb { "presets", N_ ("prints the presets of pads and SmartKnobs"), runPresets },
    Verb { "backup", N_ ("puts settings, presets, analysis and the library into one file"), runBackup },
    Verb { "restore", N_ ("puts what such a file holds back in its place"), runRestore },
    Verb { "demo-tracks", N_ ("writes the demo tracks into a folder"), runDemoTracks },
};
}

std::span<const Verb> allVerbs()
{
    return verbs;
}

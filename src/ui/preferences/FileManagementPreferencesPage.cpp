#include "ui/preferences/FileManagementPreferencesPage.h"

#include "support/language/Translate.h"

namespace
{
using Kind = SettingControl::Kind;

/** The files' pattern and the dialog's title. */
constexpr const char* itunesFile[] { "*.xml", N_ ("Select a iTunes Music Library file") };
constexpr const char* wavFile[] { "*.wav", N_ ("Save the recorder file as...") };

// clang-format off
constexpr SettingControl paths[] {
    { Kind::folder, N_ ("Audio files folder:"), "audioFolder" },
    { Kind::file,   N_ ("iTunes library file:"), "itunesLibrary", itunesFile },
    { Kind::folder, N_ ("Sample files folder:"), "samplesFolder" },
    { Kind::folder, N_ ("Slicegate user preset files:"), "slicegateFolder" },
    { Kind::folder, N_ ("SmartKnob user preset files:"), "smartknobFolder" },
    { Kind::folder, N_ ("Playlists folder:"), "playlistFolder" },
    { Kind::folder, N_ ("MIDI mapping files:"), "midiFolder" },
    { Kind::file,   N_ ("Disk recorder file:"), "recordFile", wavFile },
};
// clang-format on
}

FileManagementPreferencesPage::FileManagementPreferencesPage (CPlatterdex& e) : SettingsPage (e, [] {})
{
    addGroup (tr ("File Management"), paths);
    finish();
}

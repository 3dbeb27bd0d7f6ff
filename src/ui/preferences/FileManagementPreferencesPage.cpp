#include "ui/preferences/FileManagementPreferencesPage.h"

namespace
{
using Kind = SettingControl::Kind;

/** The files' pattern and the dialog's title. */
constexpr const char* itunesFile[] { "*.xml", "Select a iTunes Music Library file" };
constexpr const char* wavFile[] { "*.wav", "Save the recorder file as..." };

// clang-format off
constexpr SettingControl paths[] {
    { Kind::folder, "Audio files folder:", "audioFolder" },
    { Kind::file,   "iTunes library file:", "itunesLibrary", itunesFile },
    { Kind::folder, "Sample files folder:", "samplesFolder" },
    { Kind::folder, "Slicegate user preset files:", "slicegateFolder" },
    { Kind::folder, "SmartKnob user preset files:", "smartknobFolder" },
    { Kind::folder, "Playlists folder:", "playlistFolder" },
    { Kind::folder, "MIDI mapping files:", "midiFolder" },
    { Kind::file,   "Disk recorder file:", "recordFile", wavFile },
};
// clang-format on
}

FileManagementPreferencesPage::FileManagementPreferencesPage (CPlatterdex& e) : SettingsPage (e, [] {})
{
    addGroup ("File Management", paths);
    finish();
}

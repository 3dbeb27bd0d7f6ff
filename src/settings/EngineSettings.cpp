#include "settings/EngineSettings.h"

#include "settings/Folders.h"
#include "support/language/Translate.h"

DeckSetup::DeckSetup (int deck) noexcept
    : inputPair (static_cast<int8_t> (deck)),
      crossfaderSide (static_cast<int8_t> (deck % 2))
{
}

EngineSettings defaultSettings (const Folders& folders)
{
    EngineSettings settings;
    const auto setPath = [] (SettingsText& text, const juce::File& path)
    { text.set (path.getFullPathName()); };
    setPath (settings.audioFolder, folders.audio());
    setPath (settings.samplesFolder, folders.samples());
    setPath (settings.midiFolder, folders.midiFiles());
    setPath (settings.vstFolder, folders.vstPlugins());
    setPath (settings.playlistFolder, folders.playlists());
    settings.searchText.set (N_ ("Enter Search Keyword..."));
    setPath (settings.recordFile, folders.diskRecorder().getChildFile ("record.wav"));
    setPath (settings.slicegateFolder, folders.slicegateFiles());
    setPath (settings.smartknobFolder, folders.smartknobFiles());
    setPath (settings.itunesLibrary, folders.itunesLibrary());
    setPath (settings.controlCdFile, folders.controlCd().getChildFile ("control_cd.wav"));
    return settings;
}

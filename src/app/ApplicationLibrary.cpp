#include "app/ApplicationLibrary.h"

SongDatabase* ApplicationLibrary::database()
{
    if (session != nullptr)
        return &session->database;

    // A file that can't be opened is reported once, and tried again when somebody has changed it.
    const auto file = LibrarySession::fileFor (VerbOptions ({}, {})).file();
    const auto written = file.getLastModificationTime();
    if (file.getSize() == 0 || written == refused)
        return nullptr;
    auto opened = std::make_unique<LibrarySession>();
    if (!opened->open (VerbOptions ({}, {}), LibrarySession::Use::change))
    {
        refused = written;
        return nullptr;
    }
    session = std::move (opened);
    return &session->database;
}

void ApplicationLibrary::tempoFound (const juce::String& path, double bpm)
{
    auto* const songs = database();
    if (songs == nullptr)
        return;
    if (const auto id = songs->idOfFilename (path); id >= 0)
        juce::ignoreUnused (songs->setBpm (id, bpm)); // a busy file keeps the old tempo until the next load
}

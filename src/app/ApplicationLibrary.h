#pragma once

#include "cli/library/LibrarySession.h"
#include "support/EngineListener.h"

#include <memory>

/** The user's library as the running application uses it: automix plays from it, and tempos that are found are noted in
    it. It is opened when it is first needed and there; nobody is bothered while there is none. Message thread. */
class ApplicationLibrary : public EngineListener
{
public:
    /** @returns null while there is no library, or none that can be opened */
    SongDatabase* database();

    /** Notes the tempo of a song; a track that is no song of the library is left alone. */
    void tempoFound (const juce::String& path, double bpm) override;

private:
    void engineEvent (EngineEvent, int) override {}
    void engineMessage (const juce::String&, int) override {}

    std::unique_ptr<LibrarySession> session;
    juce::Time refused; ///< the file as it was when it could not be opened
};

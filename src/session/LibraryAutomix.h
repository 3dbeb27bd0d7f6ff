#pragma once

#include "engine/AutomixSource.h"
#include "library/database/SongDatabase.h"

#include <functional>

/** Gives automix the songs of the library's automix list, each once, in the list's order; from its beginning again when
    automix is switched on after its end. The list itself stays as it is, and may change meanwhile. */
class LibraryAutomix : public AutomixSource
{
public:
    /** @param library   asked at each track; null while there is none */
    explicit LibraryAutomix (std::function<SongDatabase*()> library);

    void begin() override { mayBeginAgain = true; }
    std::optional<juce::File> nextTrack() override;

    /** The last question found the list played to its end. */
    bool isAtEnd() const noexcept { return atEnd; }

private:
    int placeOfNext (const SongList&) const;

    const std::function<SongDatabase*()> library;
    SongListEntry last; ///< what was given last
    int lastPlace = -1;
    bool atEnd = false, mayBeginAgain = false;
};

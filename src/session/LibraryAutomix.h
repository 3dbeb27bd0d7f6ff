#pragma once

#include "engine/AutomixSource.h"
#include "library/database/SongDatabase.h"
#include "support/Worker.h"

#include <atomic>
#include <functional>
#include <mutex>

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

    /** True if the list is known to hold no song at all. */
    bool isEmpty() const;

private:
    int placeOfNext (const SongList&) const;

    const std::function<SongDatabase*()> library;
    SongListEntry last; ///< what was given last
    int lastPlace = -1;
    bool atEnd = false, mayBeginAgain = false;
};

/** The same on a stage: the list is read on a thread of its own, for a file on a slow drive must not hold up the message
    thread. A question gives nothing at first, and the answer when it is asked again. */
class AutomixReader : public AutomixSource
{
public:
    /** @param onEmpty   called on the list's thread when automix is switched on and has no song to play */
    explicit AutomixReader (
        std::function<SongDatabase*()> library, std::function<void()> onEmpty = [] {});

    void begin() override;
    std::optional<juce::File> nextTrack() override;

    /** Waits for the answer to the last question. */
    void wait() const { worker.wait(); }

private:
    const std::function<SongDatabase*()> library;
    const std::function<void()> foundEmpty;
    std::atomic<SongDatabase*> open { nullptr }; ///< as the message thread found it
    LibraryAutomix list;                         ///< the worker's
    std::mutex lock;                             ///< of the answer
    std::optional<juce::File> answer;
    Worker worker { "automixList" }; ///< last: its jobs use all of the above
};

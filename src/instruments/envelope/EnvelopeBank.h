#pragma once

#include "instruments/envelope/Envelope.h"
#include "support/Relaxed.h"

#include <atomic>
#include <mutex>

/** The envelopes of an instrument, where edits meet the audio thread.

    Two locks. The callback lock guards the envelopes against the audio thread, which holds it during a block anyway; an
    edit takes it only to swap finished envelopes in, and frees the old ones after. The bank's own mutex keeps its other
    threads (window, MIDI, scripts) from each other for the whole of an edit or a copy; the audio thread never takes it.
    So an edit is built and recalculated outside both, costs a block a swap of a few pointers, and is heard whole or not
    at all. The mutex comes before the callback lock: call nothing here but the audio thread's functions under the latter. */
class EnvelopeBank
{
public:
    /** @param callbackLock   of the engine; must outlive the bank */
    EnvelopeBank (int rows, const juce::CriticalSection& callbackLock);

    int size() const noexcept { return static_cast<int> (rows.size()); }

    /** The envelope of a row, for a thread that holds the callback lock. @param row   0 to size() - 1 */
    PX_AUDIO_THREAD const Envelope& audible (int row) const noexcept;

    /** A row's flags: whether an editor shows it, and whether it acts. Any thread. */
    PX_AUDIO_THREAD bool isVisible (int row) const noexcept;
    PX_AUDIO_THREAD bool isEnabled (int row) const noexcept;
    void setVisible (int row, bool) noexcept;
    void setEnabled (int row, bool) noexcept;

    /** A copy of a row's envelope. Any thread but the audio thread. */
    Envelope copy (int row) const;

    /** Puts an envelope in a row. Any thread but the audio thread. */
    void replace (int row, Envelope);

    /** Puts several in from a row on, all between the same two blocks. */
    void replace (int firstRow, std::vector<Envelope>);

    /** Grows with every change of a row's envelope or flags, so that a view sees whether it has to draw anew. Any thread. */
    std::uint32_t revision (int row) const noexcept;

    /** The same over all rows. Any thread. */
    PX_AUDIO_THREAD std::uint32_t revision() const noexcept;

private:
    struct Row
    {
        Envelope envelope;
        Relaxed<bool> visible { false }, enabled { false };
        std::atomic<std::uint32_t> revision { 0 };
    };

    Row& at (int row) noexcept;
    void changed (Row&) noexcept;
    const Row& at (int row) const noexcept;

    const juce::CriticalSection& callbackLock;
    mutable std::mutex editing;
    std::atomic<std::uint32_t> changes { 0 };
    std::vector<Row> rows;
};

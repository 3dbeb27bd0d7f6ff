#pragma once

#include "plugins/slot/SlotsFile.h"
#include "support/Worker.h"

#include <atomic>
#include <string>
#include <utility>

/** Reads the file of the slots, and writes it on a thread of its own: states of plug-ins may have megabytes. */
class SlotsKeeper
{
public:
    /** @param file   none without a name: nothing is read or written */
    explicit SlotsKeeper (juce::File file);

    /** Waits for what is being written. */
    ~SlotsKeeper();

    /** The slots as the last run left them; empty ones if there is no such file. A damaged one is kept beside, as ".bad". */
    SlotsFile::Read read() const;

    juce::File damagedFile() const { return file.getSiblingFile (file.getFileName() + ".bad"); }

    /** Has the slots written, unless the file has them already. A failure is tried again at the next change. */
    void write (SavedSlots);

    /** True once: after the first writing that has failed. */
    bool takeFailure() noexcept { return hasFailed && !std::exchange (isFailureTold, true); }

    const juce::File file;

private:
    std::string written; ///< the bytes of the file; the worker's
    std::atomic<bool> hasFailed { false };
    bool isFailureTold = false;
    Worker worker { "PluginSlots" };
};

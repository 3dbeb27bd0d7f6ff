#pragma once

#include "cli/VerbOptions.h"
#include "session/RootLock.h"
#include "support/files/PrivateFolder.h"

#include <memory>
#include <optional>

/** The engine's folder for a verb's run: the one of --root, or one that goes with the run. */
class RunRoot
{
public:
    explicit RunRoot (const VerbOptions&);
    RunRoot (const RunRoot&) = delete;
    RunRoot& operator= (const RunRoot&) = delete;

    /** False while another program has the folder: what it keeps there stays its own. */
    bool mayKeepSettings() const { return isTemporary || isHeld; }

    /** Says that a recording goes with the run, if there is one that does. */
    void warnOfLostRecordings() const;

    const bool isTemporary;
    juce::File folder;
    juce::String fault; ///< one sentence, or empty

private:
    const std::unique_ptr<PrivateFolder> temporary;
    std::optional<RootLock> lock;
    bool isHeld = false;
};

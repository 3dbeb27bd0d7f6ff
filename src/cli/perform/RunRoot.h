#pragma once

#include "cli/VerbOptions.h"

/** The engine's folder for a verb's run: the one of --root, or one that goes with the run. */
class RunRoot
{
public:
    explicit RunRoot (const VerbOptions&);
    ~RunRoot();

    RunRoot (const RunRoot&) = delete;
    RunRoot& operator= (const RunRoot&) = delete;

    /** Says that a recording goes with the run, if there is one that does. */
    void warnOfLostRecordings() const;

    const bool isTemporary;
    juce::File folder;
    juce::String fault; ///< one sentence, or empty
};

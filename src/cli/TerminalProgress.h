#pragma once

#include "cli/Interruption.h"
#include "library/import/ImportProgress.h"

/** Shows a task in one line of the terminal that overwrites itself; says nothing where the error output is no terminal.
    SIGINT and SIGTERM cancel the task. */
class TerminalProgress : public ImportProgress
{
public:
    TerminalProgress();

    /** Wipes the line. */
    ~TerminalProgress() override;

    void setProgress (double part) override;
    void setStatusText (const juce::String&) override;
    bool shouldExit() const override { return interruption.isInterrupted(); }

private:
    const Interruption interruption;
    const bool isTerminal;
    juce::String status;
    juce::uint32 shownAt = 0;
};

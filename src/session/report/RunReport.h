#pragma once

#include "session/report/CrashNote.h"
#include "session/report/SetJournal.h"
#include "session/report/SystemReport.h"
#include "support/Worker.h"

#include <juce_events/juce_events.h>

#include <functional>
#include <memory>
#include <optional>

class CPlatterdex;

/** The remains of a run that ends by a fault: a report, the set so far, and why it ended, in a folder of their own below the
    root's "reports". They are kept while the program runs, the set within two seconds, so that a program that is killed
    leaves them as well; an end as it should be takes them away. Message thread. */
class RunReport : private juce::Timer
{
public:
    static constexpr const char *reportName = "report.txt", *setName = "set.txt", *endName = "end.txt";
    static constexpr int keptRuns = 10; ///< the oldest goes

    /** Begins to keep them, and puts aside what an earlier run has left. Does nothing where another program has the root.
        @param engine   outlives this
        @param hands    follow the engine from now on, and outlive it
        @param state    what the report says */
    RunReport (CPlatterdex& engine, HandLog& hands, std::function<SystemReport()> state);
    ~RunReport() override;

    /** The folder with what an earlier run has left, if this start has found it. */
    const std::optional<juce::File>& leftByEarlierRun() const noexcept { return earlier; }

    /** The folder of all reports of a root. */
    static juce::File folderOf (const Folders&);

private:
    void putAside();
    void timerCallback() override;
    void append (std::string lines);
    void writeReport();

    CPlatterdex& engine;
    const std::function<SystemReport()> state;
    const juce::File folder, running;
    std::optional<juce::File> earlier;
    std::optional<SetJournal> journal;
    std::optional<CrashNote> crash;
    juce::StringArray said; ///< what of the report was written
    int ticks = 0;
    Worker writer { "Reports" };
};

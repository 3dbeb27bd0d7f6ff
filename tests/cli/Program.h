#pragma once

#include <juce_core/juce_core.h>

/** Output and exit code of a run of the program. */
struct ProgramRun
{
    int exitCode = -1;
    juce::StringArray out, err; ///< lines

    /** The only line of the error output, or everything. */
    juce::String errorLine() const { return err.joinIntoString ("\n"); }
};

inline juce::StringArray linesOf (const juce::String& text)
{
    auto lines = juce::StringArray::fromLines (text);
    lines.removeEmptyStrings();
    return lines;
}

/** Runs the program, or another one, to its end through the shell of the system, which parts its two outputs. */
inline ProgramRun runProgram (const juce::StringArray& arguments, const juce::File& workFolder,
                              const juce::String& program = PX_PROGRAM)
{
    const auto quoted = [] (const juce::String& word) { return "'" + word.replace ("'", "'\\''") + "'"; };
    const auto outFile = workFolder.getChildFile ("out.txt"), errFile = workFolder.getChildFile ("err.txt");
    const auto here = quoted (workFolder.getFullPathName());
    auto line = "cd " + here + " && TMPDIR=" + here + " DISPLAY= " + quoted (program);
    for (const auto& argument : arguments)
        line << " " << quoted (argument);
    line << " >out.txt 2>err.txt </dev/null";

    ProgramRun run;
    juce::ChildProcess process;
    if (process.start (juce::StringArray { "/bin/sh", "-c", line }, 0) && process.waitForProcessToFinish (-1))
        run.exitCode = static_cast<int> (process.getExitCode());
    run.out = linesOf (outFile.loadFileAsString());
    run.err = linesOf (errFile.loadFileAsString());
    if (run.err[0].startsWith ("JUCE v")) // JUCE's greeting in debug builds
        run.err.remove (0);
    outFile.deleteFile();
    errFile.deleteFile();
    return run;
}

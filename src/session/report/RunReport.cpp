#include "session/report/RunReport.h"

#include "engine/CPlatterdex.h"
#include "support/files/ReplaceFile.h"

#include <sys/stat.h>
#include <utility>

namespace
{
constexpr int lookMs = 1000;
constexpr int ticksPerReport = 5;
constexpr Worker::Key newestReport = 0;

void appendTo (const juce::File& file, const std::string& bytes)
{
    juce::FileOutputStream stream (file);
    // On a full disk the set ends here.
    if (stream.openedOk())
        juce::ignoreUnused (stream.write (bytes.data(), bytes.size()));
}
}

juce::File RunReport::folderOf (const Folders& folders)
{
    return folders.root.getChildFile ("reports");
}

RunReport::RunReport (CPlatterdex& e, HandLog& hands, std::function<SystemReport()> s)
    : engine (e),
      state (std::move (s)),
      folder (folderOf (engine.environment.folders)),
      running (folder.getChildFile ("running"))
{
    const auto& world = engine.environment;
    if (world.mayKeepSettings != nullptr && !world.mayKeepSettings())
        return;
    if (running.exists())
        putAside();
    if (!running.createDirectory() || chmod (running.getFullPathName().toRawUTF8(), S_IRWXU) != 0)
        return; // a folder that can't be written: there is a sentence on it elsewhere
    hands.follow (engine);
    journal.emplace (hands);
    append (journal->head (engine.settings, defaultSettings (world.folders)));
    crash.emplace (running.getChildFile (endName));
    startTimer (lookMs);
}

RunReport::~RunReport()
{
    stopTimer();
    if (!journal)
        return;
    crash.reset();
    writer.wait();
    running.deleteRecursively();
}

/** Gives the folder of the run before its name for good, and its report the reason of its end. */
void RunReport::putAside()
{
    const auto note = running.getChildFile (endName);
    appendTo (running.getChildFile (reportName),
              "\n[End]\n"
                  + (note.existsAsFile() ? note.loadFileAsString().trim().toStdString()
                                         : std::string ("killed, or the machine went down"))
                  + "\n");
    note.deleteFile();
    const auto ended = running.getChildFile (setName).getLastModificationTime();
    auto target = folder.getNonexistentChildFile (ended.formatted ("%Y-%m-%d_%H-%M-%S"), {}, false);
    if (!running.moveFileTo (target))
        return;
    earlier = target;
    auto all = folder.findChildFiles (juce::File::findDirectories, false, "20*");
    all.sort();
    for (int i = 0; i < all.size() - keptRuns; ++i)
        all[i].deleteRecursively();
}

void RunReport::append (std::string lines)
{
    if (!lines.empty())
        writer.post ({ [lines = std::move (lines), file = running.getChildFile (setName)] (
                           const std::stop_token&) { appendTo (file, lines); } });
}

void RunReport::timerCallback()
{
    append (journal->takeLines());
    if (ticks++ % ticksPerReport == 0)
        writeReport();
}

/** Writes the report anew where it says something else: blocks that came in time are no news. */
void RunReport::writeReport()
{
    auto now = state();
    juce::StringArray says { now.settings };
    says.addArray (now.notices);
    says.addArray (now.midiInputs);
    says.addArray (now.midiOutputs);
    says.add (juce::String (now.lostFrames));
    for (const auto& line : now.audio)
        if (!line.startsWith ("Audio:"))
            says.add (line);
    if (says == said)
        return;
    said = std::move (says);
    writer.post (newestReport, { [text = now.text (false).toStdString(),
                                  file = running.getChildFile (reportName)] (const std::stop_token&)
                                 { juce::ignoreUnused (replaceFile (file, text.data(), text.size())); } });
}

#include "midi/detect/ControllerDetection.h"

#include "midi/native/table/ModelList.h"
#include "support/language/Translate.h"

#include <deque>
#include <optional>

namespace
{
constexpr const char* heading = "Platterdex Auto Detect Controllers Log File";
constexpr int asterisks = 58; // in the line below a heading

/** The run's log. A log that can't be written is left out. */
class DetectionLog
{
public:
    explicit DetectionLog (const juce::File& file)
    {
        if (file.deleteFile())
            logger = std::make_unique<juce::FileLogger> (file, heading);
    }

    void write (const juce::String& line)
    {
        if (logger != nullptr)
            logger->logMessage (line);
    }

private:
    std::unique_ptr<juce::FileLogger> logger;
};

/** One run, which lives until its last question is answered. */
class Run : public std::enable_shared_from_this<Run>
{
public:
    Run (MidiSystem& m, const std::optional<juce::String>& port)
        : midi (&m),
          isFirstRun (m.engine.isFirstRun),
          isWholeRun (!port)
    {
        if (isWholeRun)
        {
            log.emplace (midi->engine.environment.folders.root.getChildFile ("auto-detect-controllers.log"));
            begin();
        }
        for (const auto& row : midi->control.ports.rows (MidiDirection::input))
            if (row.index >= 0 && (!port || row.name == *port))
                todo.push_back ({ row.name, nullptr });
    }

    /** Goes on until a question waits for its answer. */
    void next()
    {
        while (!todo.empty())
        {
            const auto step = todo.front();
            todo.pop_front();
            if (step.rule == nullptr)
                queueRulesOf (step.port);
            else if (offer (step.port, *step.rule))
                return;
        }
        finish();
    }

private:
    struct Step
    {
        juce::String port;
        const DetectionRule* rule; ///< null: find those of the port
    };

    void write (const juce::String& line)
    {
        if (log)
            log->write (line);
    }

    void begin()
    {
        const auto inputs = midi->ports.ports (MidiDirection::input).size();
        const auto outputs = midi->ports.ports (MidiDirection::output).size();
        write ("Version: " PX_VERSION);
        write ("Total MIDI I/O ports: " + juce::String (inputs + outputs));
        writePorts ("BEFORE");
        write ("*** Starting auto-detect process ***");
    }

    void writePorts (const char* when)
    {
        write (juce::String ("List of MIDI I/O ports and state ") + when + " auto-detect process");
        write (juce::String::repeatedString ("*", asterisks));
        for (const auto direction : { MidiDirection::input, MidiDirection::output })
            for (const auto& row : midi->control.ports.rows (direction))
                if (row.index >= 0)
                    write ("idx=" + juce::String (row.index) + " state=" + (row.isWanted ? "open" : "closed")
                           + " type=" + (direction == MidiDirection::input ? "I" : "O")
                           + " name=" + row.name);
        write ({});
        write (juce::String ("Selected controller idx ") + when + " auto-detect process: "
               + juce::String (static_cast<int> (midi->engine.settings.controllerPreset.get())));
    }

    void queueRulesOf (const juce::String& port)
    {
        write ("Trying to find a match for the midi port: [" + port + "]");
        std::deque<Step> hits;
        for (const auto& rule : detectionRules())
            if (matches (rule, port.toStdString()))
                hits.push_back ({ port, &rule });
        todo.insert (todo.begin(), hits.begin(), hits.end());
    }

    bool isOpenBothWays (const juce::String& port) const
    {
        const auto& ports = midi->control.ports;
        return ports.isInputEnabled (port) && ports.isOutputEnabled (port);
    }

    /** @returns true if the user has to answer first */
    bool offer (const juce::String& port, const DetectionRule& rule)
    {
        write (rule.message);
        foundAny = true;
        const auto isOpen = isOpenBothWays (port);
        if (isOpen && midi->engine.settings.controllerPreset == rule.model)
            return false;
        if (isFirstRun)
        {
            accept (port, rule.model);
            return false;
        }
        const auto prompts = midi->engine.environment.prompts;
        if (prompts == nullptr)
            return false; // nobody to answer is a no
        prompts->askYesNo (
            tr ("%1 controller found",
                juce::String (rule.message).upToLastOccurrenceOf (" controller found", false, false)),
            tr ("Do you want to use it?"),
            [self = shared_from_this(), port, model = rule.model] (bool yes)
            {
                if (self->midi == nullptr)
                    return;
                if (yes)
                    self->accept (port, model);
                self->next();
            });
        return true;
    }

    void accept (const juce::String& port, int model)
    {
        if (!isOpenBothWays (port))
        {
            midi->control.ports.setInputEnabled (port, true);
            midi->control.ports.setOutputEnabled (port, true);
        }
        chosen = model;
    }

    void finish()
    {
        if (chosen && *chosen >= 0 && *chosen < ModelList::count)
            midi->control.selectController (*chosen);
        if (isWholeRun)
        {
            write ("*** End auto-detect process ***");
            writePorts ("AFTER");
        }
        const auto prompts = midi->engine.environment.prompts;
        if (!midi->saveDeviceList() && prompts != nullptr)
            prompts->notify ("MIDI",
                             tr ("The list of devices could not be kept: its folder can't be written to."));
        if (isWholeRun && !foundAny && !isFirstRun && prompts != nullptr)
            prompts->notify (tr ("Auto Detect Controllers Info"),
                             tr ("No natively supported controllers found."));
    }

    const juce::WeakReference<MidiSystem> midi; ///< gone if the plug-in ends while a question waits
    const bool isFirstRun, isWholeRun;
    std::optional<DetectionLog> log;
    std::deque<Step> todo;
    std::optional<int> chosen;
    bool foundAny = false;
};
}

void autoDetectControllers (MidiSystem& midi)
{
    std::make_shared<Run> (midi, std::nullopt)->next();
}

void offerControllers (MidiSystem& midi, const juce::String& port)
{
    std::make_shared<Run> (midi, port)->next();
}

#pragma once

#include "midi/system/MidiSystem.h"
#include "support/language/Translate.h"
#include "ui/manual/HelpTopic.h"
#include "ui/midi/PortListComponent.h"
#include "ui/midi/ScriptMessagesView.h"
#include "ui/widgets/PXTextButton.h"

/** The page of the scripts: their list, their ports, what came in last and what they have to say. Changes are kept at once.
    Message thread. */
class MidiScriptingPage : public PollingView, public HelpTopicOwner, private juce::ListBoxModel
{
public:
    static constexpr int width = 640, height = 560;

    HelpTopic helpTopic() const override { return { "controller", "scripts" }; }

    explicit MidiScriptingPage (MidiSystem&);

    void resized() override;
    void paint (juce::Graphics&) override;

    /** The state of a script in one word. */
    static juce::String stateText (const MidiScriptEngine::Row&);

private:
    void pollMoving() override;
    int getNumRows() override { return static_cast<int> (rows.size()); }
    void paintListBoxItem (int row, juce::Graphics&, int rowWidth, int rowHeight, bool selected) override;
    void selectedRowsChanged (int) override { enableButtons(); }
    void deleteKeyPressed (int) override { remove(); }
    juce::String getTooltipForRow (int row) override;
    void addButton (PXTextButton&, const juce::String& tip, std::function<void()>);
    void enableButtons();
    void add();
    void remove();
    void reload();
    void keep();

    /** @returns null while no script is selected */
    const MidiScriptEngine::Row* selected() const;

    MidiSystem& midi;
    std::vector<MidiScriptEngine::Row> rows;
    juce::ListBox list { {}, this };
    PXTextButton addScriptButton { tr ("Add...") }, removeButton { tr ("Remove") },
        reloadButton { tr ("Reload") };
    PortListComponent inputs, outputs;
    ScriptMessagesView log;
    juce::String _midiMonitorLabel;
    juce::Rectangle<int> scriptsLabel, inputsLabel, outputsLabel, logLabel, monitorArea;
};

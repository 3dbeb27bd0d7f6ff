#pragma once

#include "midi/system/MidiSystem.h"
#include "support/language/Translate.h"
#include "ui/manual/HelpTopic.h"
#include "ui/midi/MidiMappingTableComponent.h"
#include "ui/widgets/PXTextButton.h"

/** The mapping editor: links the controls of a controller with commands. It writes the default mapping when it goes, and
    calls off a learning. Message thread. */
class MidiMappingComponent : public PollingView, public HelpTopicOwner
{
public:
    static constexpr int width = 726, height = 575;

    HelpTopic helpTopic() const override { return { "controller", "map-a-control" }; }

    explicit MidiMappingComponent (MidiSystem&);
    ~MidiMappingComponent() override;

    std::function<void()> onClose;     ///< the button "Close"
    std::function<void()> onShowPorts; ///< the button that leads to the ports while none is open

    MidiMappingTableComponent& tableView() noexcept { return table; }

    /** Shows the commands of an area whose names hold a text. @param area   -1 for all */
    void filter (int area, const juce::String& text);

    void paint (juce::Graphics&) override;
    void resized() override;

private:
    void pollMoving() override;
    void addButton (PXTextButton&, const juce::String& tip, std::function<void()>);
    void showFiltered();
    void toggleLearning();
    bool hasOpenInput() const;
    void forget();
    void clearAll();
    juce::File proposal() const;
    void load();
    void save();
    void exportScript();
    void say (const juce::String& title, const juce::String& sentence);
    Prompts* prompts() const { return midi.engine.environment.prompts.get(); }
    juce::String monitorText() const;

    MidiSystem& midi;
    MidiMapping& mapping { midi.control.mapping };
    juce::ComboBox areas;
    juce::TextEditor search;
    MidiMappingTableComponent table { midi.control };
    PXTextButton lampsButton { tr ("Lamps") }, learnButton { tr ("Learn") }, forgetButton { tr ("Forget") },
        loadButton { tr ("Load") }, clearButton { tr ("Clear All") }, saveButton { tr ("Save") },
        exportButton { tr ("Export Script") }, closeButton { tr ("Close") },
        portsButton { tr ("MIDI Ports...") };
    juce::String monitor;
    juce::Rectangle<int> monitorArea;
};

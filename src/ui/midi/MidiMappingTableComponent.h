#pragma once

#include "midi/control/MidiControl.h"
#include "ui/poll/PollingView.h"

/** The rows of the mapping table, each with its control. The row that a message acts on lights up for a moment; a row
    that learns is lime. */
class MidiMappingTableComponent : public PollingView, private juce::TableListBoxModel
{
public:
    explicit MidiMappingTableComponent (MidiControl&);
    ~MidiMappingTableComponent() override;

    /** Shows these commands. The selected one stays selected, if it is among them. */
    void show (std::vector<int> commands);

    /** The command that is selected, or 0. */
    int selectedCommand() const;
    void select (int command);

    /** Reads the table anew. */
    void update();

    std::function<void()> onLearn;  ///< a double click or Return on the selected row
    std::function<void()> onForget; ///< Delete

    void resized() override { table.setBounds (getLocalBounds()); }

private:
    enum Column
    {
        command = 1,
        controlType,
        message
    };

    void pollMoving() override;
    int getNumRows() override { return static_cast<int> (shown.size()); }
    void paintRowBackground (juce::Graphics&, int row, int width, int height, bool selected) override;
    void paintCell (juce::Graphics&, int row, int column, int width, int height, bool selected) override;
    juce::Component* refreshComponentForCell (int row, int column, bool selected, juce::Component*) override;
    void selectedRowsChanged (int row) override;
    void cellDoubleClicked (int, int, const juce::MouseEvent&) override;
    void returnKeyPressed (int) override;
    void deleteKeyPressed (int) override;
    int commandOf (int row) const;

    MidiControl& control;
    juce::TableListBox table { {}, this };
    std::vector<int> shown;                                    ///< commands
    std::array<uint32_t, MidiMapping::rowCount> seenHits {};   ///< by command
    std::array<uint32_t, MidiMapping::rowCount> litUntilMs {}; ///< 0 for a dark row
    uint32_t seenRevision = 0;
    bool seenLearning = false;
};

#include "ui/midi/MidiMappingTableComponent.h"

#include "engine/CommandTable.h"
#include "engine/CommandTitle.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/look/SMLookAndFeel.h"
#include "ui/midi/MappingAreas.h"

#include <algorithm>

namespace
{
constexpr int rowHeight = 24, headerHeight = 24, margin = 8, litMark = 4, cellMargin = 4;
constexpr int commandWidth = 270, typeWidth = 190, messageWidth = 238;
constexpr uint32_t litMs = 250;

/** The control type of one row. */
class TypeBox : public juce::ComboBox
{
public:
    explicit TypeBox (MidiMapping& m) : mapping (m)
    {
        setTooltip (tr ("Selects how the control moves the command."));
        onChange = [this]
        {
            auto row = mapping.row (command);
            const auto index = getSelectedItemIndex();
            if (!row.isAssigned() || index < 0 || index >= static_cast<int> (choices.size()))
                return;
            row.controlType = static_cast<int32_t> (choices[static_cast<size_t> (index)].type);
            row.features = choices[static_cast<size_t> (index)].features;
            mapping.setRow (command, row);
        };
    }

    void show (int shownCommand)
    {
        if (shownCommand != command)
        {
            command = shownCommand;
            choices = controlChoices (command);
            clear (juce::dontSendNotification);
            for (const auto& choice : choices)
                addItem (tr (choice.text), getNumItems() + 1);
        }
        const auto row = mapping.row (command);
        const auto chosen =
            std::find_if (choices.begin(), choices.end(),
                          [&row] (const auto& choice)
                          { return choice.type == row.type() && choice.features == row.features; });
        setSelectedItemIndex (chosen != choices.end() ? static_cast<int> (chosen - choices.begin()) : 0,
                              juce::dontSendNotification);
    }

private:
    MidiMapping& mapping;
    int command = 0;
    std::vector<MidiControlChoice> choices;
};
}

MidiMappingTableComponent::MidiMappingTableComponent (MidiControl& c)
    : PollingView (Pace::moving),
      control (c)
{
    auto& header = table.getHeader();
    const auto flags = juce::TableHeaderComponent::visible | juce::TableHeaderComponent::resizable;
    header.addColumn (tr ("Command"), command, commandWidth, 80, -1, flags);
    header.addColumn (tr ("Control Type"), controlType, typeWidth, 80, -1, flags);
    header.addColumn (tr ("MIDI Message"), message, messageWidth, 80, -1, flags);
    header.setStretchToFitActive (true);
    table.setHeaderHeight (headerHeight);
    table.setRowHeight (rowHeight);
    addAndMakeVisible (table);
    for (int row = 1; row < MidiMapping::rowCount; ++row)
        seenHits[static_cast<size_t> (row)] = control.dispatcher.hits (row);
}

MidiMappingTableComponent::~MidiMappingTableComponent()
{
    table.setModel (nullptr);
}

int MidiMappingTableComponent::commandOf (int row) const
{
    return row >= 0 && row < static_cast<int> (shown.size()) ? shown[static_cast<size_t> (row)] : 0;
}

int MidiMappingTableComponent::selectedCommand() const
{
    return commandOf (table.getSelectedRow());
}

void MidiMappingTableComponent::show (std::vector<int> commands)
{
    const auto selected = selectedCommand();
    shown = std::move (commands);
    table.updateContent();
    table.resized(); // the columns make room for the scroll bar
    select (selected);
    table.repaint();
}

void MidiMappingTableComponent::select (int wanted)
{
    const auto found = std::find (shown.begin(), shown.end(), wanted);
    if (found != shown.end())
        table.selectRow (static_cast<int> (found - shown.begin()));
    else
        table.deselectAllRows();
}

void MidiMappingTableComponent::update()
{
    table.updateContent();
    table.repaint();
}

void MidiMappingTableComponent::pollMoving()
{
    if (const auto revision = control.mapping.revision();
        revision != seenRevision || control.isLearning() != seenLearning)
    {
        seenRevision = revision;
        seenLearning = control.isLearning();
        update();
    }
    const auto now = std::max (1u, juce::Time::getMillisecondCounter());
    for (int row = 0; row < getNumRows(); ++row)
    {
        const auto index = static_cast<size_t> (commandOf (row));
        const auto hits = control.dispatcher.hits (commandOf (row));
        if (hits != seenHits[index])
        {
            seenHits[index] = hits;
            litUntilMs[index] = now + litMs;
            table.repaintRow (row);
        }
        else if (litUntilMs[index] != 0 && static_cast<int32_t> (litUntilMs[index] - now) < 0)
        {
            litUntilMs[index] = 0;
            table.repaintRow (row);
        }
    }
}

void MidiMappingTableComponent::paintRowBackground (juce::Graphics& g, int row, int width, int height,
                                                    bool selected)
{
    const auto number = commandOf (row);
    const auto isLearning = control.isLearning() && control.learnRow() == number;
    SMLookAndFeel::fillRow (g, { width, height }, row, selected || isLearning, isLearning);
    if (litUntilMs[static_cast<size_t> (number)] == 0)
        return;
    g.setColour (palette::accent);
    g.fillRect (0, 0, litMark, height);
    g.setColour (palette::selectedRow);
    g.fillRect (litMark, 0, width - litMark, height);
}

void MidiMappingTableComponent::paintCell (juce::Graphics& g, int row, int column, int width, int height,
                                           bool)
{
    const auto number = commandOf (row);
    auto area = juce::Rectangle<int> (width, height).withTrimmedLeft (cellMargin);
    g.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
    const auto mapped = control.mapping.row (number);
    if (column == command)
    {
        g.setColour (mapped.isAssigned() ? palette::value : palette::label);
        g.drawText (commandTitle (number), area, juce::Justification::centredLeft);
        return;
    }
    if (column != message || !mapped.isAssigned())
        return;
    const auto text = MappingAreas::controlText (mapped, control.engine.settings.controllerPreset);
    g.setColour (palette::value);
    g.drawText (text, area, juce::Justification::centredLeft);
    if (const auto others = MappingAreas::sharedWith (control.mapping, number); others.isNotEmpty())
    {
        area.removeFromLeft (g.getCurrentFont().getStringWidth (text) + margin);
        g.setColour (palette::selected);
        g.drawText (tr ("also %1", others), area, juce::Justification::centredLeft);
    }
}

juce::Component* MidiMappingTableComponent::refreshComponentForCell (int row, int column, bool,
                                                                     juce::Component* existing)
{
    std::unique_ptr<juce::Component> owned (existing);
    if (column != controlType || !control.mapping.row (commandOf (row)).isAssigned())
        return nullptr;
    if (owned == nullptr)
        owned = std::make_unique<TypeBox> (control.mapping);
    static_cast<TypeBox&> (*owned).show (commandOf (row));
    return owned.release();
}

void MidiMappingTableComponent::selectedRowsChanged (int row)
{
    control.selectLearnRow (commandOf (row));
    table.repaint();
}

void MidiMappingTableComponent::cellDoubleClicked (int, int, const juce::MouseEvent&)
{
    if (onLearn != nullptr)
        onLearn();
}

void MidiMappingTableComponent::returnKeyPressed (int)
{
    if (onLearn != nullptr)
        onLearn();
}

void MidiMappingTableComponent::deleteKeyPressed (int)
{
    if (onForget != nullptr)
        onForget();
}

#include "ui/midi/MidiMappingComponent.h"

#include "engine/CommandTable.h"
#include "engine/CommandTitle.h"
#include "midi/mapping/MidiMappingFile.h"
#include "midi/mapping/MidiScriptGenerator.h"
#include "settings/SettingsFolder.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/midi/MappingAreas.h"
#include "ui/panel/PanelPaint.h"

#include <algorithm>

namespace
{
constexpr int margin = 8, gap = 4, rowHeight = 24;
constexpr int filterLabel = 48, areaWidth = 220, searchWidth = 220, lampsWidth = 64, buttonWidth = 96,
              portsWidth = 120;

/** The file with an extension, if the user gave none. */
juce::File withEnding (const juce::File& file, const char* ending)
{
    return file.hasFileExtension (ending) ? file : file.getSiblingFile (file.getFileName() + ending);
}
}

MidiMappingComponent::MidiMappingComponent (MidiSystem& m) : PollingView (Pace::moving), midi (m)
{
    setOpaque (true);
    areas.setTextWhenNothingSelected (tr ("Select area of commands to map."));
    areas.setTooltip (tr ("Select area of commands to map."));
    areas.addItem (tr ("All commands"), 1);
    for (const auto* name : MappingAreas::names)
        areas.addItem (tr (name), areas.getNumItems() + 1);
    areas.onChange = [this] { showFiltered(); };
    addAndMakeVisible (areas);

    search.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
    search.setJustification (juce::Justification::centredLeft);
    search.setIndents (gap, 0);
    search.setTextToShowWhenEmpty (tr ("Search"), palette::label);
    search.onTextChange = [this] { showFiltered(); };
    search.onEscapeKey = [this] { search.clear(); };
    addAndMakeVisible (search);

    table.onLearn = [this] { midi.control.learn (table.selectedCommand()); };
    table.onForget = [this] { forget(); };
    addAndMakeVisible (table);

    addButton (lampsButton,
               tr ("Lights the lamps of the controller by the commands that its buttons are mapped to."),
               [this] { mapping.showsLamps = !mapping.showsLamps; });
    addButton (learnButton,
               tr ("Activates MIDI learn function to link hardware controls to PX commands. Double click the "
                   "command in the "
                   "list or press [Return] key to active learn mode in a single step."),
               [this] { toggleLearning(); });
    learnButton.setHue (skin::Hue::lime);
    addButton (forgetButton,
               tr ("Select a command in the list and click this button to delete the control link. You can "
                   "use also the "
                   "[Delete] key like a shortcut for this function."),
               [this] { forget(); });
    addButton (loadButton, tr ("Loads a controller setup from disk."), [this] { load(); });
    addButton (clearButton, tr ("Clear all the mapped functions in the list."), [this] { clearAll(); });
    addButton (saveButton, tr ("Saves a controller setup to disk."), [this] { save(); });
    addButton (exportButton, tr ("Exports controller setup to a script file."), [this] { exportScript(); });
    addButton (closeButton, "", [this] { onClose(); });
    addButton (portsButton, tr ("No MIDI input is open: opens the list of ports."),
               [this]
               {
                   if (onShowPorts != nullptr)
                       onShowPorts();
               });
    setSize (width, height);
    showFiltered();
}

MidiMappingComponent::~MidiMappingComponent()
{
    midi.control.cancelLearn();
    if (!midi.saveMapping())
        say (tr ("MIDI Mapping Editor"),
             tr ("The mapping could not be kept: its folder can't be written to."));
}

void MidiMappingComponent::addButton (PXTextButton& button, const juce::String& tip,
                                      std::function<void()> act)
{
    button.setTooltip (tip);
    button.onClick = std::move (act);
    addAndMakeVisible (button);
}

void MidiMappingComponent::filter (int area, const juce::String& text)
{
    search.setText (text, juce::dontSendNotification);
    areas.setSelectedItemIndex (area + 1, juce::dontSendNotification);
    showFiltered();
}

void MidiMappingComponent::showFiltered()
{
    table.show (MappingAreas::rowsOf (std::max (-1, areas.getSelectedItemIndex() - 1), search.getText()));
}

void MidiMappingComponent::toggleLearning()
{
    if (midi.control.isLearning())
        midi.control.cancelLearn();
    else
        midi.control.learn (table.selectedCommand());
}

void MidiMappingComponent::forget()
{
    if (const auto row = table.selectedCommand(); row > 0)
        mapping.setRow (row, { 0, mapping.row (row).data });
}

void MidiMappingComponent::say (const juce::String& title, const juce::String& sentence)
{
    if (auto* asked = prompts())
        asked->notify (title, sentence);
}

void MidiMappingComponent::clearAll()
{
    if (auto* asked = prompts())
        asked->askYesNo (tr ("Confirm Clear All"), tr ("Are you sure you want to clear all midi assigns?"),
                         [here = SafePointer (this)] (bool yes)
                         {
                             if (yes && here != nullptr)
                                 here->mapping.clear();
                         });
}

/** The proposal of a file: in the folder of the settings once a hand has chosen one, else beside the mapping in use. */
juce::File MidiMappingComponent::proposal() const
{
    const auto& engine = midi.engine;
    const auto setup = engine.environment.folders.setup();
    const auto chosen = folderOf (engine.settings.midiFolder, setup);
    return (chosen == engine.environment.folders.midiFiles() ? setup : chosen)
        .getChildFile ("default_midi_mapping.xml");
}

void MidiMappingComponent::load()
{
    auto* asked = prompts();
    if (asked == nullptr)
        return;
    asked->askFile ({ tr ("Load a MIDI mapping..."), proposal(), "*.xml" },
                    [here = SafePointer (this)] (const juce::File& file)
                    {
                        if (here == nullptr || file == juce::File())
                            return;
                        if (!loadMidiMapping (file, here->mapping))
                            here->say (
                                tr ("MIDI Mapping Editor"),
                                tr ("%1 is no MIDI mapping; nothing was changed.", file.getFullPathName()));
                    });
}

void MidiMappingComponent::save()
{
    auto* asked = prompts();
    if (asked == nullptr)
        return;
    asked->askFile ({ tr ("Save the MIDI mapping..."), proposal(), "*.xml", true },
                    [here = SafePointer (this)] (const juce::File& file)
                    {
                        if (here == nullptr || file == juce::File())
                            return;
                        if (!saveMidiMapping (here->mapping, withEnding (file, ".xml")))
                            here->say (tr ("MIDI Mapping Editor"),
                                       tr ("%1 can't be written.", file.getFullPathName()));
                    });
}

void MidiMappingComponent::exportScript()
{
    auto* asked = prompts();
    if (asked == nullptr)
        return;
    const auto start = midi.engine.environment.folders.scriptFiles().getChildFile ("midi_script.c");
    asked->askFile ({ tr ("Export the midi script file..."), start, "*.c", true },
                    [here = SafePointer (this)] (const juce::File& file)
                    {
                        if (here == nullptr || file == juce::File())
                            return;
                        if (!generateMidiScript (here->mapping, withEnding (file, ".c")))
                            here->say (tr ("MIDI Mapping Editor"),
                                       tr ("%1 can't be written.", file.getFullPathName()));
                    });
}

bool MidiMappingComponent::hasOpenInput() const
{
    const auto inputs = midi.control.ports.rows (MidiDirection::input);
    return std::any_of (inputs.begin(), inputs.end(), [] (const auto& row) { return row.isOpen; });
}

juce::String MidiMappingComponent::monitorText() const
{
    if (portsButton.isVisible())
        return tr ("No MIDI input is open: switch your controller on in the list of ports.");
    if (midi.control.isLearning())
        return tr ("Move or press the control for \"%1\"...", commandTitle (midi.control.learnRow()));
    const auto seen = midi.control.lastSeen();
    if (seen.count == 0)
        return tr ("MIDI Monitor: %1", PanelPaint::dash());
    const std::array bytes { static_cast<uint8_t> (seen.status), static_cast<uint8_t> (seen.data),
                             static_cast<uint8_t> (seen.value) };
    juce::StringArray names;
    mapping.forEachMatch (seen.status, seen.data,
                          [&names] (int number, const MidiMappingRow&)
                          { names.add (commandTitle (number)); });
    return tr ("MIDI Monitor: %1", juce::String::toHexString (bytes.data(), 3).toUpperCase()) + "   "
           + MappingAreas::controlText ({ seen.status, seen.data }, midi.engine.settings.controllerPreset)
           + " = " + juce::String (seen.value) + "   "
           + (names.isEmpty() ? tr ("(no command)") : names.joinIntoString (", "));
}

void MidiMappingComponent::pollMoving()
{
    learnButton.setToggleState (midi.control.isLearning(), juce::dontSendNotification);
    const auto isSelected = table.selectedCommand() > 0;
    learnButton.setEnabled (isSelected || midi.control.isLearning());
    forgetButton.setEnabled (isSelected);
    portsButton.setVisible (!hasOpenInput());
    lampsButton.setToggleState (mapping.showsLamps, juce::dontSendNotification);
    if (const auto text = monitorText(); text != monitor)
    {
        monitor = text;
        repaint (monitorArea);
    }
}

void MidiMappingComponent::paint (juce::Graphics& g)
{
    g.fillAll (palette::panel);
    PanelPaint::label (g, tr ("Filter:"), { margin, margin, filterLabel, rowHeight },
                       juce::Justification::centredLeft);
    PanelPaint::value (g, monitor,
                       monitorArea.withTrimmedRight (portsButton.isVisible() ? portsWidth + gap : 0),
                       juce::Justification::centredLeft);
}

void MidiMappingComponent::resized()
{
    auto area = getLocalBounds().reduced (margin);
    auto top = area.removeFromTop (rowHeight).withTrimmedLeft (filterLabel);
    areas.setBounds (top.removeFromLeft (areaWidth));
    lampsButton.setBounds (top.removeFromRight (lampsWidth));
    top.removeFromRight (gap);
    search.setBounds (top.removeFromRight (searchWidth));

    auto bottom = area.removeFromBottom (rowHeight);
    closeButton.setBounds (bottom.removeFromRight (buttonWidth));
    for (auto* button :
         { &learnButton, &forgetButton, &loadButton, &clearButton, &saveButton, &exportButton })
    {
        button->setBounds (bottom.removeFromLeft (buttonWidth));
        bottom.removeFromLeft (gap);
    }
    area.removeFromBottom (gap);
    monitorArea = area.removeFromBottom (rowHeight);
    portsButton.setBounds (monitorArea.withLeft (monitorArea.getRight() - portsWidth));
    area.removeFromBottom (gap);
    area.removeFromTop (gap);
    table.setBounds (area);
}

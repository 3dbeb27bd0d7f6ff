#include "ui/midi/MidiScriptingPage.h"

#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/panel/PanelPaint.h"

namespace
{
constexpr int margin = 12, gap = 8, labelHeight = 20, buttonWidth = 80, buttonHeight = 24,
              scriptRowHeight = 24;
constexpr int listHeight = 5 * scriptRowHeight, portsHeight = 5 * PortListComponent::rowHeight,
              stateWidth = 100;

/** A message as the monitor shows it; a dash while there was none. */
juce::String hexText (uint32_t word)
{
    if (word == 0)
        return PanelPaint::dash();
    std::array<uint8_t, 3> bytes {};
    for (size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<uint8_t> (word >> 8 * i);
    return juce::String::toHexString (bytes.data(), static_cast<int> (bytes.size())).toUpperCase();
}
}

MidiScriptingPage::MidiScriptingPage (MidiSystem& m)
    : PollingView (Pace::moving),
      midi (m),
      inputs (m.scripts.ports(), MidiDirection::input),
      outputs (m.scripts.ports(), MidiDirection::output),
      log (m.scripts.journal(), ScriptMessagesView::Shown::all)
{
    list.setRowHeight (scriptRowHeight);
    addAndMakeVisible (list);
    addButton (addScriptButton, tr ("Adds a script to the list and starts it."), [this] { add(); });
    addButton (removeButton, tr ("Ends the selected script and takes it off the list; its file stays."),
               [this] { remove(); });
    addButton (reloadButton, tr ("Builds the selected script anew from its file, and starts it."),
               [this] { reload(); });
    inputs.onChange = outputs.onChange = [this] { keep(); };
    addAndMakeVisible (inputs);
    addAndMakeVisible (outputs);
    addAndMakeVisible (log);
    enableButtons();
    setSize (width, height);
}

void MidiScriptingPage::addButton (PXTextButton& button, const juce::String& tip, std::function<void()> click)
{
    button.setTooltip (tip);
    button.onClick = std::move (click);
    addAndMakeVisible (button);
}

const MidiScriptEngine::Row* MidiScriptingPage::selected() const
{
    const auto row = list.getSelectedRow();
    return row >= 0 && row < static_cast<int> (rows.size()) ? &rows[static_cast<size_t> (row)] : nullptr;
}

void MidiScriptingPage::enableButtons()
{
    removeButton.setEnabled (selected() != nullptr);
    reloadButton.setEnabled (selected() != nullptr);
}

void MidiScriptingPage::add()
{
    if (midi.engine.environment.prompts == nullptr)
        return;
    midi.engine.environment.prompts->askFile (
        { .title = tr ("Select a MIDI script file"), .start = midi.scripts.folder(), .pattern = "*.c" },
        [here = SafePointer (this)] (const juce::File& file)
        {
            if (here == nullptr || file == juce::File())
                return;
            here->midi.scripts.addScript (file);
            here->keep();
            here->list.selectRow (here->getNumRows() - 1);
        });
}

void MidiScriptingPage::remove()
{
    if (const auto* row = selected())
    {
        midi.scripts.removeScript (row->file);
        keep();
    }
}

void MidiScriptingPage::reload()
{
    if (const auto* row = selected())
        midi.scripts.addScript (row->file);
}

void MidiScriptingPage::keep()
{
    refresh();
    if (!midi.saveScriptSetup() && midi.engine.environment.prompts != nullptr)
        midi.engine.environment.prompts->notify (
            tr ("MIDI"), tr ("The list of scripts could not be kept: its folder can't be written to."));
}

void MidiScriptingPage::pollMoving()
{
    if (auto now = midi.scripts.rows(); now != rows)
    {
        rows = std::move (now);
        list.updateContent();
        list.repaint();
        enableButtons();
    }
    if (const auto text = tr ("MIDI Monitor: %1", hexText (midi.scripts.lastMessage()));
        text != _midiMonitorLabel)
    {
        _midiMonitorLabel = text;
        repaint (monitorArea);
    }
}

juce::String MidiScriptingPage::stateText (const MidiScriptEngine::Row& row)
{
    using State = MidiScript::State;
    switch (row.state)
    {
    case State::running:
        return row.hasHung ? tr ("hangs") : tr ("running");
    case State::loading:
        return tr ("loading");
    case State::failed:
        return tr ("has errors");
    case State::none:
        break;
    }
    return tr ("not running");
}

void MidiScriptingPage::paintListBoxItem (int row, juce::Graphics& g, int rowWidth, int rowHeight,
                                          bool isSelected)
{
    if (row < 0 || row >= getNumRows())
        return;
    const auto& script = rows[static_cast<size_t> (row)];
    auto area = juce::Rectangle<int> (rowWidth, rowHeight);
    if (isSelected)
    {
        g.setColour (palette::raised);
        g.fillRect (area);
    }
    area.reduce (gap, 0);
    const auto isFine = script.state == MidiScript::State::running && !script.hasHung;
    PanelPaint::label (g, stateText (script).toUpperCase(), area.removeFromRight (stateWidth),
                       juce::Justification::centredRight);
    PanelPaint::value (g, (isFine ? juce::String() : PanelPaint::dash() + " ") + script.file.getFileName(),
                       area, juce::Justification::centredLeft);
}

juce::String MidiScriptingPage::getTooltipForRow (int row)
{
    return row >= 0 && row < getNumRows() ? rows[static_cast<size_t> (row)].file.getFullPathName()
                                          : juce::String();
}

void MidiScriptingPage::paint (juce::Graphics& g)
{
    g.fillAll (palette::panel);
    const auto label = [&g] (const juce::String& text, juce::Rectangle<int> area)
    { PanelPaint::label (g, text, area, juce::Justification::centredLeft); };
    label (tr ("Midi Script File:"), scriptsLabel);
    label (tr ("MIDI Inputs"), inputsLabel);
    label (tr ("MIDI Outputs"), outputsLabel);
    label (tr ("Log"), logLabel);
    PanelPaint::value (g, _midiMonitorLabel, monitorArea, juce::Justification::centredLeft);
}

void MidiScriptingPage::resized()
{
    auto area = getLocalBounds().reduced (margin);
    scriptsLabel = area.removeFromTop (labelHeight);
    auto upper = area.removeFromTop (listHeight);
    auto buttons = upper.removeFromRight (buttonWidth);
    list.setBounds (upper.withTrimmedRight (gap));
    for (auto* const button : { &addScriptButton, &removeButton, &reloadButton })
    {
        button->setBounds (buttons.removeFromTop (buttonHeight));
        buttons.removeFromTop (4);
    }
    area.removeFromTop (gap);
    auto ports = area.removeFromTop (labelHeight + portsHeight);
    const auto place =
        [] (juce::Rectangle<int> column, juce::Rectangle<int>& label, PortListComponent& portList)
    {
        label = column.removeFromTop (labelHeight);
        portList.setBounds (column);
    };
    place (ports.removeFromLeft ((ports.getWidth() - gap) / 2), inputsLabel, inputs);
    place (ports.withTrimmedLeft (gap), outputsLabel, outputs);
    area.removeFromTop (gap);
    monitorArea = area.removeFromTop (labelHeight);
    logLabel = area.removeFromTop (labelHeight);
    log.setBounds (area);
}

#include "ui/envelope/CurveEditorPane.h"

#include "skin/Palette.h"
#include "support/language/Translate.h"

namespace
{
constexpr int margin = 8, gap = 4, buttonWidth = 80, buttonHeight = 24;

PXTextButton& dress (PXTextButton& button, const char* name, const juce::String& tooltip,
                     std::function<void()> act)
{
    button.setComponentID (name);
    button.setTooltip (tooltip);
    button.onClick = std::move (act);
    return button;
}
}

CurveEditorPane::CurveEditorPane (EnvLanes lanes, Files f, Prompts* p, int width)
    : preset (std::move (f)),
      tableWidth (width),
      table (lanes),
      editor (p)
{
    curves().setLanes (std::move (lanes));
    curves().addListener (*this);
    curves().setTooltip (
        tr ("Right click: a new point. Drag points, and the rings between them to bend. Wheel "
            "zooms, shift pans."));
    table.onSelect = [this] (int row)
    {
        if (curves().selectedLane() != row)
            curves().selectLane (row);
    };
    table.select (0);
    dress (importButton, "_importButton", tr ("Loads a preset from a file"),
           [this]
           {
               preset.files.askToLoad (
                   [self = SafePointer (this)] (const juce::File& file)
                   {
                       juce::String sentence;
                       if (self != nullptr)
                           self->curves().recordAround ([&] { sentence = self->preset.importFile (file); });
                       return sentence;
                   });
           });
    dress (exportButton, "_exportButton", tr ("Saves a preset to a file"),
           [this] { preset.files.askToSave (preset.name(), preset.exportFile); });
    dress (closeButton, "_closeButton", tr ("Closes this window (Escape)"),
           [this]
           {
               if (onClose != nullptr)
                   onClose();
           });
    importButton.setEnabled (preset.files.canAsk());
    exportButton.setEnabled (preset.files.canAsk());
    for (auto* child : std::initializer_list<juce::Component*> { &table, &editor, &importButton,
                                                                 &exportButton, &closeButton })
        addAndMakeVisible (child);
}

CurveEditorPane::~CurveEditorPane()
{
    curves().removeListener (*this);
}

void CurveEditorPane::resized()
{
    auto area = getLocalBounds().reduced (margin);
    auto row = area.removeFromBottom (buttonHeight);
    area.removeFromBottom (margin);
    importButton.setBounds (row.removeFromLeft (buttonWidth));
    row.removeFromLeft (gap);
    exportButton.setBounds (row.removeFromLeft (buttonWidth));
    closeButton.setBounds (row.removeFromRight (buttonWidth));
    table.setBounds (area.removeFromLeft (tableWidth));
    area.removeFromLeft (margin);
    editor.setBounds (area);
}

void CurveEditorPane::paint (juce::Graphics& g)
{
    g.fillAll (palette::panel);
}

bool CurveEditorPane::keyPressed (const juce::KeyPress& key)
{
    return editor.keyPressed (key);
}

void CurveEditorPane::graphEnvChanged (EnvComponent& changed)
{
    table.select (changed.selectedLane());
}

#include "ui/envelope/EnvEditor.h"

#include "instruments/preset/PresetFile.h"
#include "skin/Palette.h"
#include "support/Prompts.h"
#include "support/files/ReplaceFile.h"
#include "support/language/Translate.h"

namespace
{
constexpr int rowHeight = 24, gap = 4, barHeight = 12, menuWidth = 88, buttonWidth = 56;

/** Shared by all editors, so that a state can be copied from one to the other. */
std::optional<Envelope>& clipboard()
{
    static std::optional<Envelope> state;
    return state;
}

/** Snap and sliding as they were set last, in whatever editor; off when the program starts. */
EnvEdit::Rules& lastRules()
{
    static EnvEdit::Rules rules;
    return rules;
}
}

EnvEditor::EnvEditor (Prompts* p) : prompts (p)
{
    component.rules = lastRules();
    menuButton.setComponentID ("_curveMenuButton");
    menuButton.setTooltip (tr ("Files, copies and turns of the curve; snap and sliding of its points"));
    menuButton.onFillMenu = [this] (juce::PopupMenu& filled) { filled = menu(); };
    menuButton.onMenuChoice = [this] (int id) { choose (id); };
    undoButton.setComponentID ("_undoButton");
    undoButton.setTooltip (tr ("Takes the last edit back (Ctrl+Z)"));
    undoButton.onClick = [this] { component.undo(); };
    redoButton.setComponentID ("_redoButton");
    redoButton.setTooltip (tr ("Does it again (Ctrl+Shift+Z)"));
    redoButton.onClick = [this] { component.redo(); };
    bar.setSmallestRange (0.0625);
    bar.addListener (this);
    component.addListener (*this);
    for (auto* child :
         std::initializer_list<juce::Component*> { &menuButton, &undoButton, &redoButton, &component, &bar })
        addAndMakeVisible (child);
    graphEnvChanged (component);
}

EnvEditor::~EnvEditor()
{
    component.removeListener (*this);
}

void EnvEditor::resized()
{
    auto area = getLocalBounds();
    auto row = area.removeFromTop (rowHeight);
    menuButton.setBounds (row.removeFromLeft (menuWidth));
    for (auto* button : { &undoButton, &redoButton })
    {
        row.removeFromLeft (gap);
        button->setBounds (row.removeFromLeft (buttonWidth));
    }
    area.removeFromTop (gap);
    bar.setBounds (area.removeFromBottom (barHeight));
    area.removeFromBottom (gap);
    component.setBounds (area);
}

void EnvEditor::paint (juce::Graphics& g)
{
    g.setColour (palette::edgeDark);
    g.drawRect (component.getBounds().expanded (1));
}

juce::PopupMenu EnvEditor::menu() const
{
    juce::PopupMenu made;
    made.addItem (openState, tr ("Open State File (Beatloom)"), prompts != nullptr);
    made.addItem (saveState, tr ("Save State File (Beatloom)"), prompts != nullptr);
    made.addSeparator();
    made.addItem (copyState, tr ("Copy State"));
    made.addItem (pasteState, tr ("Paste State"), clipboard().has_value());
    made.addSeparator();
    made.addItem (flipLevels, tr ("Flip vertically"));
    made.addItem (normaliseLevels, tr ("Normalize levels"));
    made.addSeparator();
    made.addItem (snapX, tr ("Snap X"), true, component.rules.snapX);
    made.addItem (snapY, tr ("Snap Y"), true, component.rules.snapY);
    made.addItem (sliding, tr ("Sliding Point Move"), true, component.rules.sliding);
    return made;
}

void EnvEditor::choose (int item)
{
    const auto change = [this] (auto&& how)
    {
        auto next = component.envelope();
        how (next);
        component.applyToSelected (std::move (next));
    };
    auto& rules = component.rules;
    switch (item)
    {
    case openState:
        openFile();
        break;
    case saveState:
        saveFile();
        break;
    case copyState:
        clipboard() = component.envelope();
        break;
    case pasteState:
        if (clipboard())
            change ([] (Envelope& next) { next.assign (*clipboard()); });
        break;
    case flipLevels:
        change ([] (Envelope& next) { next.flip(); });
        break;
    case normaliseLevels:
        change ([] (Envelope& next) { next.normalise(); });
        break;
    case snapX:
        rules.snapX = !rules.snapX;
        break;
    case snapY:
        rules.snapY = !rules.snapY;
        break;
    case sliding:
        rules.sliding = !rules.sliding;
        break;
    default:
        break;
    }
    lastRules() = rules;
}

void EnvEditor::openFile()
{
    prompts->askFile (
        { tr ("Open a curve's state..."), {}, "*.zev", false },
        [self = SafePointer (this)] (const juce::File& file)
        {
            if (self == nullptr || file == juce::File())
                return;
            auto next = self->component.envelope();
            auto fault = EnvelopeFault::cutOff;
            if (const auto read = PresetFile::read (file))
            {
                const std::span bytes (reinterpret_cast<const std::uint8_t*> (read->data()), read->size());
                fault = next.faultIn (bytes);
                if (fault == EnvelopeFault::none && next.read (bytes))
                    return self->component.applyToSelected (std::move (next));
            }
            self->prompts->notify (tr ("Curve"),
                                   tr ("%1 can't be read. %2", file.getFileName(), tr (sentenceFor (fault))));
        });
}

void EnvEditor::saveFile()
{
    prompts->askFile (
        { tr ("Save the curve's state..."),
          juce::File::getSpecialLocation (juce::File::userDocumentsDirectory).getChildFile ("Curve.zev"),
          "*.zev", true },
        [self = SafePointer (this)] (const juce::File& chosen)
        {
            if (self == nullptr || chosen == juce::File())
                return;
            const auto file = chosen.withFileExtension ("zev");
            const auto bytes = self->component.envelope().blob();
            if (!replaceFile (file, bytes.data(), bytes.size()))
                self->prompts->notify (tr ("Curve"), tr ("%1 can't be written.", file.getFullPathName()));
        });
}

bool EnvEditor::keyPressed (const juce::KeyPress& key)
{
    return component.keyPressed (key);
}

void EnvEditor::graphEnvChanged (EnvComponent&)
{
    undoButton.setEnabled (component.canUndo());
    redoButton.setEnabled (component.canRedo());
    bar.setRangeLimits (component.fullTime(), juce::dontSendNotification);
    bar.setCurrentRange (component.view().time, juce::dontSendNotification);
}

void EnvEditor::scrollBarMoved (juce::ScrollBar*, double)
{
    auto next = component.view();
    next.time = bar.getCurrentRange();
    component.setView (next);
}

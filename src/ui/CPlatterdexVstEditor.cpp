#include "ui/CPlatterdexVstEditor.h"

#include "engine/CPlatterdex.h"

namespace
{
constexpr int startWidth = 1280, startHeight = 800, largest = 8192;
constexpr int margin = 8, gap = 4;
}

CPlatterdexVstEditor::Layout::Layout (juce::Rectangle<int> window)
{
    header = window.removeFromTop (HeaderBar::height);
    desk = window;
    mixer = window.removeFromBottom (MixerBar::height);
    auto area = window.reduced (margin, gap);
    for (int deck = 0; deck < deckCount; ++deck)
    {
        const auto left = deckCount - deck;
        rows[static_cast<size_t> (deck)] = area.removeFromTop ((area.getHeight() - gap * (left - 1)) / left);
        area.removeFromTop (gap);
    }
}

CPlatterdexVstEditor::CPlatterdexVstEditor (CPlatterdex& e, std::function<void()> audioSettings)
    : AudioProcessorEditor (e),
      engine (e),
      header (e, std::move (audioSettings)),
      mixer (e),
      keyboard (e)
{
    setOpaque (true);
    setWantsKeyboardFocus (true);
    header.onShowParameters = [this] (bool shown) { showParameters (shown); };
    addAndMakeVisible (header);
    addAndMakeVisible (mixer);
    for (int deck = 0; deck < deckCount; ++deck)
    {
        auto& row = rows[static_cast<size_t> (deck)];
        row = std::make_unique<DeckRow> (engine, deck);
        addAndMakeVisible (*row);
    }
    if (engine.settings.editor[EditorPreference::showTooltips] != 0)
        tooltips = std::make_unique<juce::TooltipWindow> (this);

    engine.listeners.add (*this);
    setResizable (true, false);
    setResizeLimits (minimumWidth, minimumHeight, largest, largest);
    setSize (startWidth, startHeight);
}

CPlatterdexVstEditor::~CPlatterdexVstEditor()
{
    engine.listeners.remove (*this);
    engine.editorBeingDeleted (this);
}

void CPlatterdexVstEditor::paint (juce::Graphics& g)
{
    g.fillAll (Look::ground);
}

void CPlatterdexVstEditor::resized()
{
    const Layout layout (getLocalBounds());
    header.setBounds (layout.header);
    mixer.setBounds (layout.mixer);
    for (size_t deck = 0; deck < rows.size(); ++deck)
        if (rows[deck] != nullptr)
            rows[deck]->setBounds (layout.rows[deck]);
    if (parameters != nullptr)
        parameters->setBounds (layout.desk);
}

void CPlatterdexVstEditor::showParameters (bool shown)
{
    if (shown && parameters == nullptr)
    {
        parameters = std::make_unique<ParameterList> (engine);
        addChildComponent (*parameters);
        resized();
    }
    if (parameters != nullptr)
        parameters->setVisible (shown);
    for (auto& row : rows)
        row->setVisible (!shown);
    mixer.setVisible (!shown);
    header.setParametersShown (shown);
    if (!shown && isShowing())
        grabKeyboardFocus();
}

bool CPlatterdexVstEditor::keyStateChanged (bool)
{
    keyboard.keyStateChanged();
    return false;
}

void CPlatterdexVstEditor::focusOfChildComponentChanged (FocusChangeType)
{
    if (!hasKeyboardFocus (true))
        keyboard.releaseAll();
}

void CPlatterdexVstEditor::engineEvent (EngineEvent event, int index)
{
    if (event == EngineEvent::loadBegan && index >= 0 && index < deckCount)
        deckRow (index).clearMessage();
}

void CPlatterdexVstEditor::engineMessage (const juce::String& text, int deck)
{
    if (deck >= 0 && deck < deckCount)
        deckRow (deck).showMessage (text);
}

#include "engine/CPlatterdex.h"
#include "support/language/Translate.h"
#include "ui/CPlatterdexVstEditor.h"
#include "ui/HelpTopics.h"
#include "ui/manual/ManualReader.h"
#include "ui/panel/PanelPaint.h"

// Keys, mouse and drags that mean the window as a whole.

void CPlatterdexVstEditor::act (KeyAction action, int deck)
{
    switch (action)
    {
    case KeyAction::load:
        if (deck >= 0 && deck < deckCount)
            loader.open (deck, *decks[static_cast<size_t> (deck)]);
        break;
    case KeyAction::spectralWaveform:
    {
        auto& flag = engine.settings.editor[EditorPreference::spectralWaveform];
        flag = flag == 0 ? 1 : 0;
        break;
    }
    case KeyAction::undo:
        engine.grids.undo (touchedDeck);
        header->newsLine().tell (tr ("Undo on deck %1", PanelPaint::letterOf (touchedDeck)));
        break;
    case KeyAction::redo:
        engine.grids.redo (touchedDeck);
        header->newsLine().tell (tr ("Redo on deck %1", PanelPaint::letterOf (touchedDeck)));
        break;
    case KeyAction::loadFree:
        browser->loadToFreeDeck();
        break;
    case KeyAction::songs:
        browser->takeKeyboard();
        break;
    case KeyAction::help:
        helpWithWhatIsMeant();
        break;
    case KeyAction::search:
        browser->takeKeyboardToSearch();
        break;
    case KeyAction::none:
        break;
    }
}

void CPlatterdexVstEditor::showHelp (const juce::Component* component)
{
    ManualReader::open (tools, content, HelpTopics::of (component));
}

/** A control that the keyboard was taken to is meant, else what the mouse is over, in whichever window. */
void CPlatterdexVstEditor::helpWithWhatIsMeant()
{
    const auto* const walked = walk.current();
    showHelp (walked != nullptr ? walked
                                : juce::Desktop::getInstance().getMainMouseSource().getComponentUnderMouse());
}

void CPlatterdexVstEditor::mouseDown (const juce::MouseEvent& event)
{
    auto* strip = dynamic_cast<DeckComponent*> (event.eventComponent);
    if (strip == nullptr && event.eventComponent != nullptr)
        strip = event.eventComponent->findParentComponentOfClass<DeckComponent>();
    if (strip != nullptr)
        touch (strip->deck());
    // A click on the decks takes the keyboard back to them.
    if (walk.current() != nullptr)
    {
        walk.leave();
        grabKeyboardFocus();
    }
    if (browser->hasKeyboardFocus (true) && event.eventComponent != &*browser
        && !browser->isParentOf (event.eventComponent))
        grabKeyboardFocus();
    clock->hurry();
}

void CPlatterdexVstEditor::filesDropped (const juce::StringArray& files, int, int)
{
    const auto isFolder = files.size() == 1 && juce::File (files[0]).isDirectory();
    header->newsLine().tell (isFolder ? tr ("LET A FOLDER GO OVER THE BROWSER")
                                      : tr ("LET A TRACK GO OVER A DECK OR THE BROWSER"));
}

void CPlatterdexVstEditor::textDropped (const juce::String&, int, int)
{
    header->newsLine().tell (tr ("A TEXT IS NO TRACK: DRAG ITS FILE"));
}

void CPlatterdexVstEditor::touch (int index)
{
    touchedDeck = index;
    for (const auto& strip : decks)
        strip->setTouched (strip->deck() == index);
}

/** Shift+Tab takes the keyboard from the decks to the controls, as Tab alone takes it to the songs; there both keys go on and back,
    and Escape gives it back to the decks. */
bool CPlatterdexVstEditor::walkByKey (const juce::KeyPress& key)
{
    using Key = juce::KeyPress;
    const auto isWalking = walk.current() != nullptr;
    const auto isBack = key == Key (Key::tabKey, juce::ModifierKeys::shiftModifier, 0);
    if (isBack || (isWalking && key == Key (Key::tabKey)))
    {
        walk.go (isBack && isWalking ? -1 : 1);
        return true;
    }
    if (!isWalking || key != Key (Key::escapeKey))
        return false;
    walk.leave();
    grabKeyboardFocus();
    return true;
}

bool CPlatterdexVstEditor::keyPressed (const juce::KeyPress& key)
{
    if (walkByKey (key))
        return true;
    if (key == juce::KeyPress (juce::KeyPress::escapeKey) && isFullScreen())
    {
        setFullScreen (false);
        return true;
    }
    const auto isOurs = keyboard.keyPressed (key);
    if (isOurs)
        clock->hurry(); // the lamps follow the hand
    return isOurs;
}

bool CPlatterdexVstEditor::keyStateChanged (bool)
{
    if (keyboard.keyStateChanged())
        clock->hurry();
    return false;
}

void CPlatterdexVstEditor::focusOfChildComponentChanged (FocusChangeType)
{
    if (!hasKeyboardFocus (true))
        keyboard.releaseAll();
}

#include "ui/browser/actions/EditAnswers.h"

#include "session/browse/LibraryFaults.h"
#include "support/language/Translate.h"

LibraryEdits::Done EditAnswers::say (const BrowserWorld& world, juce::Component& asker)
{
    return [&world, alive = juce::Component::SafePointer<juce::Component> (&asker)] (int code)
    {
        if (alive != nullptr)
            world.say (LibraryFaults::sentence (code));
    };
}

void EditAnswers::undo (const BrowserWorld& world, juce::Component& asker)
{
    if (world.room != nullptr && world.room->edits.canUndo())
        world.room->edits.undo (say (world, asker));
}

void EditAnswers::addUndo (juce::PopupMenu& menu, const BrowserWorld& world, juce::Component& asker)
{
    const auto edit = world.room != nullptr ? world.room->edits.undoText() : juce::String();
    if (edit.isEmpty())
        return;
    menu.addSeparator();
    menu.addItem (tr ("Undo: %1", edit),
                  [&world, alive = juce::Component::SafePointer<juce::Component> (&asker)]
                  {
                      if (alive != nullptr)
                          undo (world, *alive);
                  });
}

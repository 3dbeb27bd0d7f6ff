#pragma once

#include "ui/browser/model/BrowserWorld.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** The ends of edits, alike for songs and lists. Message thread. */
namespace EditAnswers
{
/** Says what went wrong. @param asker   while it is there, the answer counts; goes before the world does */
LibraryEdits::Done say (const BrowserWorld&, juce::Component& asker);

/** Appends a line that takes back the last edit of a list, if there is one. */
void addUndo (juce::PopupMenu&, const BrowserWorld&, juce::Component& asker);

/** Takes back the last edit of a list. */
void undo (const BrowserWorld&, juce::Component& asker);
}

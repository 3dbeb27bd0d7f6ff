#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** The keys that open the browser's menus, so that no entry needs a mouse. */
namespace MenuKey
{
/** The menu of the selected row. */
inline bool opensMenu (const juce::KeyPress& key)
{
    return key == juce::KeyPress (juce::KeyPress::F10Key, juce::ModifierKeys::shiftModifier, 0);
}

/** The playlists to which the selected songs can be added. */
inline bool opensPlaylists (const juce::KeyPress& key)
{
    return key == juce::KeyPress ('p', juce::ModifierKeys::ctrlModifier, 0);
}
}

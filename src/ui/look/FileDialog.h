#pragma once

#include "support/Prompts.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

/** Asks for a file in a window that stops nothing. The keyboard goes to the field of the name, and one Return takes the path
    that stands there, a whole one too. A file that would be replaced is asked about. Message thread. */
class FileDialog
{
public:
    /** Opens the window, which goes with this object.
        @param answered   called once; File() if the user breaks it off. It may end this object */
    FileDialog (const Prompts::FileQuestion&, std::function<void (const juce::File&)> answered);

private:
    juce::WildcardFileFilter filter;
    juce::FileBrowserComponent browser;
    juce::FileChooserDialogBox box;
};

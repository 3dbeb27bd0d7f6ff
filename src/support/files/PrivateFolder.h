#pragma once

#include <juce_core/juce_core.h>

/** A folder for what goes with its owner, in the system's place for such. No other user can look into it, guess its name or have
    laid it out before. Not on the audio thread. */
class PrivateFolder
{
public:
    PrivateFolder();
    ~PrivateFolder();
    PrivateFolder (const PrivateFolder&) = delete;
    PrivateFolder& operator= (const PrivateFolder&) = delete;

    /** A file or folder in it; what can't be written where the folder could not be made. */
    juce::File file (const juce::String& name) const { return folder.getChildFile (name); }

    const juce::File folder;
};

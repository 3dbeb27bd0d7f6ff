#pragma once

#include <juce_core/juce_core.h>

#include <functional>

/** Visits the files below a folder, each folder's files and sub-folders in the order of their names, with numbers in
    names ordered as numbers.

    Links to folders are followed, but no folder is entered twice, whatever leads to it. What is neither file nor
    folder, what can't be reached and what has a name that isn't UTF-8 is left out. */
namespace FolderWalk
{
/** @param path       the folder's path, then "/" and the names below it
    @param estimate   of the walk that is done, 0 to 1: the place in each folder counts as a share of its parent's
    @returns false to end the walk */
using Visitor = std::function<bool (const juce::String& path, double estimate)>;

/** Any thread but the audio thread. @returns false if the visitor ended it */
bool visitFiles (const juce::File& folder, const Visitor&);
}

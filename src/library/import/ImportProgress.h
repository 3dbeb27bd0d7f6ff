#pragma once

#include "support/language/Translate.h"

#include <juce_core/juce_core.h>

/** A watcher of a task of the library: a window, a terminal, a test. Called on the task's thread only. */
class ImportProgress
{
public:
    virtual ~ImportProgress() = default;

    /** @param part   done so far, 0 to 1 */
    virtual void setProgress (double part) = 0;

    /** The thing in hand, such as a path. */
    virtual void setStatusText (const juce::String&) = 0;

    /** True once the user has cancelled: the task ends after the song at hand and keeps what it did. */
    virtual bool shouldExit() const = 0;
};

/** Texts of the window of an import. */
namespace ImportTexts
{
inline constexpr const char* windowTitle = N_ ("Importing Music Files");
inline constexpr const char* cancelButton = N_ ("Cancel");
inline constexpr const char* folderChooserTitle = N_ ("Please select a song directory...");
}

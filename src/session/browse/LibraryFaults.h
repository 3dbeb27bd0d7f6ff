#pragma once

#include <juce_core/juce_core.h>

/** Sentences for the codes of the library's operations. */
namespace LibraryFaults
{
/** The library has an edited field, the file's tag has not. */
inline constexpr int tagNotWritten = -20;

/** One sentence for the user: "The library is being written to by another program; nothing was changed. Try again."
    @param code   of LibraryCode or SQLite; 0 gives nothing */
juce::String sentence (int code);
}

#include "session/browse/LibraryFaults.h"

#include "library/sql/LibraryCode.h"

namespace
{
/** SQLite's codes beside those of LibraryCode. */
constexpr int noMemory = 7, readOnly = 8, inputOutput = 10, corrupt = 11, cantOpen = 14, tooBig = 18,
              notADatabase = 26;
}

juce::String LibraryFaults::sentence (int code)
{
    switch (code)
    {
    case LibraryCode::ok:
    case LibraryCode::interrupted:
        return {};
    case LibraryCode::busy:
        return "Another program is writing to the library; nothing was changed. Try again in a moment.";
    case LibraryCode::full:
        return "The disk is full; nothing was changed. Make room on it and try again.";
    case readOnly:
        return "The library may not be written to; nothing was changed.";
    case inputOutput:
    case cantOpen:
        return "The library's drive does not answer; nothing was changed. Is it still connected?";
    case corrupt:
    case notADatabase:
        return "The library's file is damaged; nothing was changed. Restart the program: it puts the newest "
               "backup in place.";
    case noMemory:
    case tooBig:
        return "There is not enough memory for this; nothing was changed.";
    case LibraryCode::constraint:
        return "The library has a song with this path already; nothing was changed.";
    case LibraryCode::notOpen:
        return "There is no library open.";
    case LibraryCode::wrongKind:
        return "This list can't be changed.";
    case LibraryCode::emptyList:
        return "The list is empty.";
    case LibraryCode::badField:
        return "There is no such column.";
    case LibraryCode::badArgument:
        return "This list is not there any more.";
    case tagNotWritten:
        return "The library has the new text; the file's tag could not be written.";
    default:
        return "The library could not be read or written (code " + juce::String (code)
               + "); nothing was changed.";
    }
}

#include "session/browse/LibraryFaults.h"

#include "library/sql/LibraryCode.h"
#include "support/language/Translate.h"

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
        return tr ("Another program is writing to the library; nothing was changed. Try again in a moment.");
    case LibraryCode::full:
        return tr ("The disk is full; nothing was changed. Make room on it and try again.");
    case readOnly:
        return tr ("The library may not be written to; nothing was changed.");
    case inputOutput:
    case cantOpen:
        return tr ("The library's drive does not answer; nothing was changed. Is it still connected?");
    case corrupt:
    case notADatabase:
        return tr (
            "The library's file is damaged; nothing was changed. Restart the program: it puts the newest "
            "backup in place.");
    case noMemory:
    case tooBig:
        return tr ("There is not enough memory for this; nothing was changed.");
    case LibraryCode::constraint:
        return tr ("The library has a song with this path already; nothing was changed.");
    case LibraryCode::notOpen:
        return tr ("There is no library open.");
    case LibraryCode::wrongKind:
        return tr ("This list can't be changed.");
    case LibraryCode::emptyList:
        return tr ("The list is empty.");
    case LibraryCode::badField:
        return tr ("There is no such column.");
    case LibraryCode::badArgument:
        return tr ("This list is not there any more.");
    case tagNotWritten:
        return tr ("The library has the new text; the file's tag could not be written.");
    default:
        return tr ("The library could not be read or written (code %1); nothing was changed.", code);
    }
}

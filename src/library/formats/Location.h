#pragma once

#include <juce_core/juce_core.h>

/** The path that a track's location in a property list names. The first 17 characters are dropped, whatever they are: a
    location begins with "file://localhost/". Slashes become the system's separator, two hexadecimal digits behind a
    percent sign become their byte, an unfinished percent sign ends the path. The bytes are UTF-8, or where they are not,
    Latin-1; zeros are left out. Where that names no file on the disk and the location is another form of file URL, it is
    the path of that. Looks at the disk.
    @returns the path, absolute where the system's paths begin with a separator; one with a drive's letter stays as it is;
             empty if there is nothing behind the start */
juce::String decodeLocation (const juce::String& location);

/** The path in a URL of a file, "file:///a", "file://host/a" or "file:/a", the host being left out. */
juce::String pathOfFileUrl (const juce::String& url);

/** The bytes that a text with percent signs stands for, by the same rules, as a text. */
juce::String decodePercents (const juce::String& text);

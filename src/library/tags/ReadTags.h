#pragma once

#include "library/songs/SongRecord.h"

/** Fills a record from a file: path, format, what its tag holds, and what TagLib knows of its audio. No audio
    is decoded. Tempo comes from an MP3's "TBPM", an MP4's "tmpo", a FLAC's "BPM" or a WMA's "WM/BeatsPerMinute", the
    rating from an MP3's "POPM".

    Of a file that can't be read the path, the format and, if there is no title yet, the file's name as the title are
    set. What a file doesn't tell stays as it is in the record, so that a song can be refreshed.
    @param path   absolute, with "/" between its parts. Any thread but the audio thread. */
void readTags (const juce::String& path, SongRecord&);

/** The stars of the byte in a "POPM" frame. @returns 0 to 5 */
int starsOfPopm (int byte);

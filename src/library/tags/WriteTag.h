#pragma once

#include "library/songs/SongField.h"
#include "library/songs/SongRecord.h"

#include <span>

/** Writes edited fields into the tag of the song's file, all of them at once.

    The tag is written into a copy beside the file, which then takes its place: a reader that has the file open, such as
    a deck that is loading it, keeps the former one, and a full disk or a power cut leaves it whole. The file keeps its
    owner, its rights and its extended attributes. One that has several names, or whose owner can't be kept, gets the
    copy's bytes instead, so that all its names go on meaning one file. An ID3v2.3 tag stays one, so that players which
    know no newer version still read it.
    @param fields   artist, album, year, genre, title, track number and comment are kept in tags, all others in the
                    database alone: they leave the file untouched. The texts are the record's; of year and track number
                    the whole number that it begins with counts, and 0 removes them
    @returns false for a number above SongField::listOrder, and when the file could not be written; it is then as it
             was. Any thread but the audio thread; one file is written at a time. */
bool writeTags (const SongRecord&, std::span<const SongField> fields);

/** The same with one field. */
bool writeTag (const SongRecord&, SongField field);

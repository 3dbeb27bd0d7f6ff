#pragma once

#include "library/songs/SongRecord.h"

/** Songs as a collection has them: few genres, many artists, long paths. */
class MadeUpSongs
{
public:
    SongRecord song (int number)
    {
        const auto artist = random.nextInt (1 + count / 20);
        SongRecord song;
        song[SongColumn::artist] = "Artist " + juce::String (artist);
        song[SongColumn::album] = "Album " + juce::String (artist / 2) + " of dreams";
        song[SongColumn::title] = "Title " + juce::String::toHexString (random.nextInt64()) + " (mix)";
        song[SongColumn::genre] = "Genre " + juce::String (random.nextInt (40));
        song[SongColumn::comment] = "a comment, it's short";
        song[SongColumn::filename] = "/home/dj/Music/Artist " + juce::String (artist) + "/Album/"
                                     + juce::String (number) + " some title.mp3";
        song[SongColumn::format] = ".mp3";
        song[SongColumn::bpm] = juce::String (100.0 + random.nextDouble() * 60.0, 2);
        song[SongColumn::duration] = juce::String (100 + random.nextInt (400));
        song[SongColumn::filesize] = juce::String (3'000'000 + random.nextInt (20'000'000));
        song[SongColumn::year] = juce::String (1960 + random.nextInt (60));
        song[SongColumn::bitrate] = "320";
        song[SongColumn::rating] = juce::String (random.nextInt (6));
        return song;
    }

    int count;
    juce::Random random { 1 };
};

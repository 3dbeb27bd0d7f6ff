#pragma once

#include <juce_core/juce_core.h>
#include <juce_graphics/juce_graphics.h>

#include <vector>

/** A way in which a file can carry tags. */
struct TagKind
{
    const char* name;
    const char* extension;
    bool keepsTempo, keepsRating, keepsPicture; ///< in what readTags and readCoverArt look for
    void (*write) (const juce::File&);          ///< title "Tïtel 曲" or "Titel", artist, album, and so on
};

/** Every kind that the library knows. */
const std::vector<TagKind>& tagKinds();

/** The texts of the tags; ID3v1 knows no other script. */
namespace Tagged
{
inline const juce::String title = juce::CharPointer_UTF8 ("T\xc3\xaftel \xe6\x9b\xb2"), plainTitle = "Titel";
inline const juce::String artist = "O'Brien", album = "Record", comment = "good", genre = "Techno";
inline constexpr int year = 1998, track = 7, bpm = 128, stars = 4;
inline constexpr int pictureWidth = 20, pictureHeight = 10;
}

/** Two seconds of noise in stereo at 44.1 kHz, in the format of the target's extension, without a tag. */
juce::File makeUntagged (const juce::File& target);

/** The same with tags. */
juce::File makeTagged (const TagKind&, const juce::File& target);

/** A red PNG. */
juce::MemoryBlock makePicture (int width = Tagged::pictureWidth, int height = Tagged::pictureHeight);

/** A checksum of the decoded audio. */
juce::String audioChecksum (const juce::File&);

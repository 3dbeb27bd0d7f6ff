#include "tags/TaggedFiles.h"

#include "shared/EncodedFiles.h"
#include "shared/TemporaryFolder.h"

#include <aifffile.h>
#include <asffile.h>
#include <attachedpictureframe.h>
#include <fileref.h>
#include <flacfile.h>
#include <gtest/gtest.h>
#include <id3v1tag.h>
#include <id3v2tag.h>
#include <mp4file.h>
#include <mpegfile.h>
#include <popularimeterframe.h>
#include <textidentificationframe.h>
#include <vorbisfile.h>
#include <wavfile.h>
#include <xiphcomment.h>

#include <map>

namespace
{
TagLib::String text (const juce::String& source)
{
    return { source.toRawUTF8(), TagLib::String::UTF8 };
}

TagLib::ByteVector picture()
{
    const auto bytes = makePicture();
    return { static_cast<const char*> (bytes.getData()), static_cast<unsigned int> (bytes.getSize()) };
}

void fill (TagLib::Tag& tag, const juce::String& title = Tagged::title)
{
    tag.setTitle (text (title));
    tag.setArtist (text (Tagged::artist));
    tag.setAlbum (text (Tagged::album));
    tag.setComment (text (Tagged::comment));
    tag.setGenre (text (Tagged::genre));
    tag.setYear (Tagged::year);
    tag.setTrack (Tagged::track);
}

void fillId3v2 (TagLib::ID3v2::Tag& tag)
{
    fill (tag);
    auto* tempo = new TagLib::ID3v2::TextIdentificationFrame ("TBPM", TagLib::String::Latin1);
    tempo->setText (TagLib::String::number (Tagged::bpm));
    tag.addFrame (tempo);
    auto* rating = new TagLib::ID3v2::PopularimeterFrame;
    rating->setRating (229);
    tag.addFrame (rating);
    auto* art = new TagLib::ID3v2::AttachedPictureFrame;
    art->setMimeType ("image/jpeg"); // a lie that must not matter
    art->setPicture (picture());
    tag.addFrame (art);
}

template <typename Type>
void tagMp3 (const juce::File& target, Type&& change)
{
    TagLib::MPEG::File file (target.getFullPathName().toRawUTF8());
    EXPECT_TRUE (change (file));
}

void tagId3v1 (const juce::File& target)
{
    tagMp3 (target,
            [] (TagLib::MPEG::File& file)
            {
                fill (*file.ID3v1Tag (true), Tagged::plainTitle);
                return file.save (TagLib::MPEG::File::ID3v1, TagLib::File::StripOthers, TagLib::ID3v2::v4,
                                  TagLib::File::DoNotDuplicate);
            });
}

template <TagLib::ID3v2::Version version>
void tagId3v2 (const juce::File& target)
{
    tagMp3 (target,
            [] (TagLib::MPEG::File& file)
            {
                fillId3v2 (*file.ID3v2Tag (true));
                return file.save (TagLib::MPEG::File::ID3v2, TagLib::File::StripOthers, version,
                                  TagLib::File::DoNotDuplicate);
            });
}

void tagMp4 (const juce::File& target)
{
    TagLib::MP4::File file (target.getFullPathName().toRawUTF8());
    fill (*file.tag());
    file.tag()->setItem ("tmpo", TagLib::MP4::Item (Tagged::bpm));
    TagLib::MP4::CoverArtList covers;
    covers.append ({ TagLib::MP4::CoverArt::JPEG, picture() });
    file.tag()->setItem ("covr", covers);
    EXPECT_TRUE (file.save());
}

void tagFlac (const juce::File& target)
{
    TagLib::FLAC::File file (target.getFullPathName().toRawUTF8());
    fill (*file.tag());
    file.xiphComment (true)->addField ("bpm", TagLib::String::number (Tagged::bpm));
    auto* art = new TagLib::FLAC::Picture;
    art->setData (picture());
    file.addPicture (art);
    EXPECT_TRUE (file.save());
}

void tagAsf (const juce::File& target)
{
    TagLib::ASF::File file (target.getFullPathName().toRawUTF8());
    fill (*file.tag());
    file.tag()->setAttribute ("WM/BeatsPerMinute",
                              TagLib::ASF::Attribute (TagLib::String::number (Tagged::bpm)));
    TagLib::ASF::Picture art;
    art.setMimeType ("image/png");
    art.setPicture (picture());
    file.tag()->setAttribute ("WM/Picture", TagLib::ASF::Attribute (art));
    EXPECT_TRUE (file.save());
}

/** Tempo, rating and picture are there, and must not be read from this kind of file. */
template <typename Type>
void tagRiff (const juce::File& target)
{
    Type file (target.getFullPathName().toRawUTF8());
    fill (*file.tag());
    if constexpr (std::is_same_v<Type, TagLib::RIFF::WAV::File>)
        fillId3v2 (*file.ID3v2Tag());
    else
        fillId3v2 (*file.tag());
    EXPECT_TRUE (file.save());
}

void tagVorbis (const juce::File& target)
{
    TagLib::Ogg::Vorbis::File file (target.getFullPathName().toRawUTF8());
    fill (*file.tag());
    file.tag()->addField ("BPM", TagLib::String::number (Tagged::bpm));
    EXPECT_TRUE (file.save());
}

/** The untagged file of an extension, encoded once for all tests. */
const juce::File& masterOf (const juce::String& extension)
{
    static const TemporaryFolder folder;
    static std::map<juce::String, juce::File> masters;
    auto& master = masters[extension];
    if (master == juce::File())
    {
        const auto wav = folder.file ("source.wav");
        if (!wav.exists())
            EncodedFiles::writeWav (EncodedFiles::makeNoise (2, 2 * 44100, 44100.0), 44100.0, wav);
        master = extension == ".wav" ? wav
                                     : EncodedFiles::encode (wav, folder.file ("master" + extension),
                                                             { "-map_metadata", "-1" });
    }
    return master;
}
}

const std::vector<TagKind>& tagKinds()
{
    static const std::vector<TagKind> kinds {
        { "ID3v1", ".mp3", false, false, false, tagId3v1 },
        { "ID3v2.3", ".mp3", true, true, true, tagId3v2<TagLib::ID3v2::v3> },
        { "ID3v2.4", ".MP3", true, true, true, tagId3v2<TagLib::ID3v2::v4> },
        { "MP4", ".m4a", true, false, true, tagMp4 },
        { "FLAC", ".flac", true, false, true, tagFlac },
        { "Vorbis", ".ogg", false, false, false, tagVorbis },
        { "ASF", ".wma", true, false, true, tagAsf },
        { "AIFF", ".aiff", false, false, false, tagRiff<TagLib::RIFF::AIFF::File> },
        { "WAV", ".wav", false, false, false, tagRiff<TagLib::RIFF::WAV::File> },
    };
    return kinds;
}

juce::File makeUntagged (const juce::File& target)
{
    EXPECT_TRUE (masterOf (target.getFileExtension().toLowerCase()).copyFileTo (target));
    return target;
}

juce::File makeTagged (const TagKind& kind, const juce::File& target)
{
    kind.write (makeUntagged (target));
    return target;
}

juce::MemoryBlock makePicture (int width, int height)
{
    juce::Image image (juce::Image::RGB, width, height, true);
    image.clear (image.getBounds(), juce::Colours::red);
    juce::MemoryOutputStream bytes;
    EXPECT_TRUE (juce::PNGImageFormat().writeImageToStream (image, bytes));
    return bytes.getMemoryBlock();
}

juce::String audioChecksum (const juce::File& file)
{
    const TemporaryFolder folder;
    return EncodedFiles::runFfmpeg ({ "-i", file.getFullPathName(), "-map", "0:a", "-f", "md5",
                                      folder.file ("sum").getFullPathName() })
        .loadFileAsString();
}

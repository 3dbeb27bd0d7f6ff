#include "tags/TaggedFiles.h"

#include "library/tags/CoverArt.h"
#include "library/tags/CoverArtCache.h"
#include "library/tags/Picture.h"
#include "library/tags/ReadTags.h"
#include "library/tags/WriteTag.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace
{
SongRecord read (const juce::File& file)
{
    SongRecord record;
    readTags (file.getFullPathName(), record);
    return record;
}

using Column = SongColumn;

juce::String orNothing (bool isKept, int value)
{
    return isKept ? juce::String (value) : juce::String();
}

juce::String titleOf (const TagKind& kind)
{
    return juce::String (kind.name) == "ID3v1" ? Tagged::plainTitle : Tagged::title;
}
}

TEST (Tags, AreReadFromEveryKind)
{
    const TemporaryFolder folder;
    for (const auto& kind : tagKinds())
    {
        SCOPED_TRACE (kind.name);
        const auto file = makeTagged (kind, folder.file (juce::String (kind.name) + kind.extension));
        const auto song = read (file);
        for (const auto& [column, expected] : std::initializer_list<std::pair<Column, juce::String>> {
                 { Column::filename, file.getFullPathName() },
                 { Column::format, kind.extension },
                 { Column::title, titleOf (kind) },
                 { Column::artist, Tagged::artist },
                 { Column::album, Tagged::album },
                 { Column::comment, Tagged::comment },
                 { Column::genre, Tagged::genre },
                 { Column::year, juce::String (Tagged::year) },
                 { Column::tracknum, juce::String (Tagged::track) },
                 { Column::duration, "2" },
                 { Column::samplerate, "44100" },
                 { Column::channels, "2" },
                 { Column::key, {} },
                 { Column::bpm, orNothing (kind.keepsTempo, Tagged::bpm) },
                 { Column::rating, orNothing (kind.keepsRating, Tagged::stars) },
             })
            EXPECT_EQ (song[column], expected) << nameOf (column);
        EXPECT_GT (song[Column::bitrate].getIntValue(), 0);

        const auto art = readCoverArt (file.getFullPathName());
        ASSERT_EQ (art.isValid(), kind.keepsPicture);
        if (art.isValid())
        {
            EXPECT_EQ (art.getBounds(), juce::Rectangle (Tagged::pictureWidth, Tagged::pictureHeight));
            EXPECT_EQ (art.getPixelAt (3, 3), juce::Colours::red);
        }
    }
}

TEST (Tags, UntaggedFilesAreNamedByTheirFile)
{
    const TemporaryFolder folder;
    for (const auto* extension : { ".mp3", ".m4a", ".flac", ".ogg", ".wma", ".aiff", ".wav" })
    {
        const auto file = makeUntagged (folder.file (juce::String ("A. Name - it's") + extension));
        const auto song = read (file);
        EXPECT_EQ (song[Column::title], "A. Name - it's") << extension;
        EXPECT_EQ (song[Column::artist], "") << extension;
        EXPECT_EQ (song[Column::duration], "2") << extension;
        EXPECT_FALSE (readCoverArt (file.getFullPathName()).isValid());
    }
}

TEST (Tags, UnreadableFilesKeepWhatIsKnown)
{
    const TemporaryFolder folder;
    ASSERT_TRUE (folder.file ("folder.mp3").createDirectory());
    ASSERT_TRUE (folder.file ("empty.flac").create());
    ASSERT_TRUE (folder.file ("text.ogg").replaceWithText ("no music"));
    ASSERT_TRUE (folder.file ("noextension").replaceWithText ("no music"));
    ASSERT_EQ (mkfifo (folder.file ("pipe.wav").getFullPathName().toRawUTF8(), 0600), 0);

    struct Case
    {
        const char *name, *title, *format;
    };
    for (const auto& [name, title, format] :
         { Case { "missing.mp3", "missing", ".mp3" }, Case { "folder.mp3", "folder", ".mp3" },
           Case { "empty.flac", "empty", ".flac" }, Case { "text.ogg", "text", ".ogg" },
           Case { "pipe.wav", "pipe", ".wav" }, Case { "noextension", "noextension", "" },
           Case { ".mp3", ".mp3", ".mp3" } })
    {
        const auto path = folder.file (name).getFullPathName();
        SongRecord song;
        readTags (path, song);
        EXPECT_EQ (song[Column::title], title);
        EXPECT_EQ (song[Column::format], format) << name;
        EXPECT_EQ (song[Column::filename], path);

        song[Column::title] = "Known";
        song[Column::rating] = "3";
        readTags (path, song);
        EXPECT_EQ (song[Column::title], "Known") << name;
        EXPECT_EQ (song[Column::rating], "3") << name;

        EXPECT_FALSE (readCoverArt (path).isValid());
        EXPECT_FALSE (writeTag (song, SongField::title)) << name;
    }
}

TEST (Tags, RatingBytesBecomeStars)
{
    const int lasts[] { 0, 63, 127, 191, 229, 255 };
    for (int byte = 0, stars = 0; byte < 256; stars += byte++ == lasts[stars] ? 1 : 0)
        EXPECT_EQ (starsOfPopm (byte), stars) << byte;
}

TEST (Tags, WritingChangesOneFieldAndNoSound)
{
    const TemporaryFolder folder;
    for (const auto& kind : tagKinds())
    {
        SCOPED_TRACE (kind.name);
        const auto file = makeTagged (kind, folder.file (juce::String ("w") + kind.name + kind.extension));
        const auto sound = audioChecksum (file);
        auto expected = read (file);
        for (const auto& [field, text] : std::initializer_list<std::pair<SongField, const char*>> {
                 { SongField::title, "New \xc3\xa9 title" },
                 { SongField::artist, "Somebody" },
                 { SongField::album, "" },
                 { SongField::year, "2021" },
                 { SongField::genre, "House" },
                 { SongField::trackNumber, "12" },
                 { SongField::comment,
                   "a longer comment than the one before, so that the tag has to grow" } })
        {
            expected[columnOf (field)] = juce::String::fromUTF8 (text);
            EXPECT_TRUE (writeTag (expected, field));
        }
        auto found = read (file);
        found[Column::bitrate] = expected[Column::bitrate];
        for (size_t i = 0; i < found.columns.size(); ++i)
            EXPECT_EQ (found.columns[i], expected.columns[i]) << songColumns[i].name;
        EXPECT_EQ (readCoverArt (file.getFullPathName()).isValid(), kind.keepsPicture);
        EXPECT_EQ (audioChecksum (file), sound);

        const auto untagged = makeUntagged (folder.file (juce::String ("u") + kind.name + kind.extension));
        auto song = read (untagged);
        song[Column::artist] = Tagged::artist;
        EXPECT_TRUE (writeTag (song, SongField::artist));
        EXPECT_EQ (read (untagged)[Column::artist], Tagged::artist);
        EXPECT_EQ (audioChecksum (untagged), sound);
    }
    EXPECT_EQ (folder.file ("").getNumberOfChildFiles (juce::File::findFilesAndDirectories),
               2 * static_cast<int> (tagKinds().size()))
        << "a working copy was left behind";
}

TEST (Tags, AllFieldsAreWrittenAtOnceAndTheFileStaysTheSame)
{
    const TemporaryFolder folder;
    const auto file = makeTagged (tagKinds()[1], folder.file ("a.mp3")),
               other = folder.file ("other name.mp3");
    const auto path = file.getFullPathName().toStdString();
    ASSERT_EQ (::chmod (path.c_str(), 0640), 0);
    const auto hasAttributes = ::setxattr (path.c_str(), "user.colour", "red", 3, 0) == 0;
    auto song = read (file);
    const SongField fields[] { SongField::title, SongField::artist, SongField::rating, SongField::year };
    for (const auto isLinked : { false, true })
    {
        if (isLinked)
        {
            ASSERT_EQ (::link (path.c_str(), other.getFullPathName().toRawUTF8()), 0);
        }
        song[Column::title] = isLinked ? juce::String::repeatedString ("long ", 5000).trim() : "one";
        song[Column::artist] = "two";
        song[Column::year] = "2003";
        EXPECT_TRUE (writeTags (song, fields));
        for (const auto& each : { file, isLinked ? other : file })
        {
            const auto found = read (each);
            EXPECT_EQ (found[Column::title], song[Column::title]);
            EXPECT_EQ (found[Column::artist] + found[Column::year], "two2003");
        }
        struct stat facts
        {
        };
        char colour[4] {};
        EXPECT_EQ (::stat (path.c_str(), &facts), 0);
        EXPECT_EQ (facts.st_mode & 0777, 0640u);
        EXPECT_EQ (facts.st_nlink, isLinked ? 2u : 1u);
        EXPECT_EQ (::getxattr (path.c_str(), "user.colour", colour, 3) == 3, hasAttributes);
    }
    EXPECT_EQ (folder.file ("").getNumberOfChildFiles (juce::File::findFilesAndDirectories), 2);
}

TEST (Tags, PicturesAreScaledAndKeptUntilTheirFileChanges)
{
    const TemporaryFolder folder;
    const auto file = makeTagged (tagKinds()[1], folder.file ("a.mp3"));
    const auto path = file.getFullPathName();
    CoverArtCache cache (10, 2);
    EXPECT_FALSE (cache.find (path));
    const auto picture = cache.read (path);
    EXPECT_EQ (juce::jmax (picture.getWidth(), picture.getHeight()), 10);
    EXPECT_NEAR (picture.getWidth() * Tagged::pictureHeight, picture.getHeight() * Tagged::pictureWidth,
                 juce::jmax (Tagged::pictureWidth, Tagged::pictureHeight));
    EXPECT_EQ (cache.find (path)->getPixelData(), picture.getPixelData());
    EXPECT_EQ (cache.read (path).getPixelData(), picture.getPixelData()) << "it is decoded once";

    EXPECT_FALSE (cache.read ("/none").isValid());
    EXPECT_TRUE (cache.find ("/none") && cache.find (path)) << "a song without a picture is known too";
    juce::ignoreUnused (cache.read ("/other"));
    EXPECT_FALSE (cache.find ("/none")) << "the one that was not looked at for longest goes";

    ASSERT_TRUE (makeUntagged (file).setLastModificationTime (juce::Time (2020, 1, 1, 0, 0)));
    EXPECT_FALSE (cache.read (path).isValid());
}

TEST (Tags, WritingTouchesOnlyWhatTagsHold)
{
    const TemporaryFolder folder;
    const auto file = makeTagged (tagKinds()[1], folder.file ("a.mp3"));
    const auto link = folder.file ("link.mp3");
    ASSERT_TRUE (file.createSymbolicLink (link, false));
    juce::MemoryBlock before, after;
    file.loadFileAsData (before);

    auto song = read (link);
    song[Column::rating] = "1";
    song[Column::key] = "Am";
    EXPECT_TRUE (writeTag (song, SongField::rating));
    EXPECT_TRUE (writeTag (song, SongField::key));
    EXPECT_FALSE (writeTag (song, static_cast<SongField> (25)));
    EXPECT_FALSE (writeTag (song, static_cast<SongField> (-1)));
    file.loadFileAsData (after);
    EXPECT_EQ (before, after);

    song[Column::title] = "Behind the link";
    EXPECT_TRUE (writeTag (song, SongField::title));
    EXPECT_TRUE (link.isSymbolicLink());
    EXPECT_EQ (read (file)[Column::title], "Behind the link");
    file.loadFileAsData (after);
    EXPECT_EQ (after[3], 3) << "the tag is no ID3v2.3 tag any more";
}

TEST (Picture, IsDecodedOrRefusedWhateverItsBytes)
{
    juce::Image rgb (juce::Image::RGB, 70, 30, true), argb (juce::Image::ARGB, 40, 50, true);
    for (auto* image : { &rgb, &argb })
        image->clear (image->getBounds(), juce::Colours::red);
    juce::MemoryOutputStream png, clearPng, jpeg;
    juce::PNGImageFormat().writeImageToStream (rgb, png);
    juce::PNGImageFormat().writeImageToStream (argb, clearPng);
    juce::JPEGImageFormat().writeImageToStream (rgb, jpeg);

    const auto bytesOf = [] (const juce::MemoryOutputStream& stream)
    {
        const auto* begin = static_cast<const uint8_t*> (stream.getData());
        return std::vector<uint8_t> (begin, begin + stream.getDataSize());
    };
    juce::Random random (7);
    for (const auto& [sound, bounds] :
         std::initializer_list<std::pair<std::vector<uint8_t>, juce::Rectangle<int>>> {
             { bytesOf (png), rgb.getBounds() },
             { bytesOf (clearPng), argb.getBounds() },
             { bytesOf (jpeg), rgb.getBounds() } })
    {
        const auto image = decodePicture (sound);
        ASSERT_EQ (image.getBounds(), bounds);
        const auto small = decodePicture (sound, 8);
        EXPECT_EQ (juce::jmax (small.getWidth(), small.getHeight()), 8);
        EXPECT_GT (small.getPixelAt (2, 2).getRed(), 250);
        const auto pixel = image.getPixelAt (0, 0);
        EXPECT_TRUE (pixel.getRed() > 250 && pixel.getGreen() < 5 && pixel.getBlue() < 5) << pixel.toString();

        for (size_t length = 0; length < sound.size(); ++length)
            decodePicture (std::span (sound).first (length));
        for (int round = 0; round < 500; ++round)
        {
            auto damaged = sound;
            for (int i = random.nextInt (4); i >= 0; --i)
                damaged[static_cast<size_t> (random.nextInt (static_cast<int> (damaged.size())))] =
                    static_cast<uint8_t> (random.nextInt (256));
            const auto found = decodePicture (damaged);
            EXPECT_LE (int64_t { found.getWidth() } * found.getHeight(), 40'000'000);
        }
    }
}

TEST (Tags, SurviveEveryDamage)
{
    const TemporaryFolder folder;
    juce::Random random (20260);
    for (const auto& kind : tagKinds())
    {
        SCOPED_TRACE (kind.name);
        juce::MemoryBlock sound;
        makeTagged (kind, folder.file (juce::String ("f") + kind.extension)).loadFileAsData (sound);
        const auto file = folder.file (juce::String ("damaged") + kind.extension);
        for (int round = 0; round < 200; ++round)
        {
            auto damaged = sound;
            // Most of what TagLib looks at stands at the two ends.
            for (int i = random.nextInt (12); i >= 0; --i)
            {
                const auto near =
                    random.nextInt (round % 2 == 0 ? 200 : 4000) % static_cast<int> (damaged.getSize());
                const auto at = random.nextInt (3) > 0 ? static_cast<size_t> (near)
                                                       : damaged.getSize() - 1 - static_cast<size_t> (near);
                damaged[at] = static_cast<char> (random.nextInt (4) == 0 ? 0xff : random.nextInt (256));
            }
            if (round % 5 == 0)
                damaged.setSize (static_cast<size_t> (random.nextInt (static_cast<int> (damaged.getSize()))));
            ASSERT_TRUE (file.replaceWithData (damaged.getData(), damaged.getSize()));

            auto song = read (file);
            EXPECT_TRUE (song[Column::title].isNotEmpty());
            readCoverArt (file.getFullPathName());
            song[Column::title] = "x";
            writeTag (song, SongField::title);
        }
    }
}

#include "AdecLibrary.h"

#include <numeric>
#include <sys/stat.h>

namespace
{
constexpr int sourceFrames = 44100;

class BadInput : public AdecTest
{
protected:
    juce::File encodeAs (const juce::String& extension, int channels = 2)
    {
        // Short pages, so that an Ogg file is more than one of them.
        const juce::StringArray options { "-page_duration", "100000" };
        return encoded ("encoded" + extension, extension == ".ogg" ? options : juce::StringArray(),
                        sourceFrames, channels);
    }
};

const auto extensions = { ".mp3", ".m4a", ".wav", ".aif", ".aiff", ".wma", ".flac", ".ogg" };
}

TEST_F (BadInput, WhatIsNoAudioFileGivesNoFrame)
{
    juce::Array<juce::File> files { folder.file ("missing.mp3"), folder, folder.file ("x/y/z.mp3"),
                                    folder.file (juce::String::repeatedString ("a", 4000) + ".mp3"),
                                    folder.file (juce::String::repeatedString ("a/", 2000) + "b.mp3") };
    for (const auto* extension : extensions)
    {
        files.add (folder.file (juce::String ("empty") + extension));
        files.getLast().create();
        files.add (folder.file (juce::String ("folder") + extension));
        files.getLast().createDirectory();
        files.add (folder.file (juce::String ("text") + extension));
        files.getLast().replaceWithText (
            juce::String::repeatedString ("Side A, first track: hello.\n", 2000));
        files.add (folder.file (juce::String ("list") + extension));
        files.getLast().replaceWithText ("#EXTM3U\n#EXTINF:1,x\n" + noise().getFullPathName() + "\n");
        files.add (folder.file (juce::String ("pipe") + extension));
        ASSERT_EQ (mkfifo (files.getLast().getFullPathName().toRawUTF8(), 0600), 0);
    }
    for (const auto& file : files)
        EXPECT_EQ (library.decode (file).frames(), 0) << file.getFileName();

    for (const auto* path :
         { "", "http://localhost/a.mp3", "concat:a.mp3|b.mp3", "pipe:0", "-", "/dev/zero" })
        EXPECT_EQ (library.adec_open_filename (path), nullptr) << path;
}

TEST_F (BadInput, ATruncatedFileGivesTheFramesBeforeTheCut)
{
    for (const auto* extension : extensions)
    {
        const auto whole = encodeAs (extension);
        juce::MemoryBlock bytes;
        ASSERT_TRUE (whole.loadFileAsData (bytes));
        // An MP4 without the tables at its end is nothing at all.
        const bool isReadable = juce::String (extension) != ".m4a";
        for (const int percent : { 1, 30, 60, 99 })
        {
            const auto cut = folder.file (juce::String ("cut") + extension);
            cut.replaceWithData (bytes.getData(), bytes.getSize() * static_cast<size_t> (percent) / 100);
            const auto decoded = library.decode (cut);
            EXPECT_LT (decoded.frames(), sourceFrames + 1) << whole.getFileName() << " " << percent;
            if (percent >= 60 && isReadable)
            {
                EXPECT_GT (decoded.frames(), sourceFrames * (percent - 35) / 100) << whole.getFileName();
            }
        }
    }
}

TEST_F (BadInput, MoreThanTwoChannelsAreReportedAndDecoded)
{
    for (const auto* extension : { ".wav", ".flac", ".m4a" })
    {
        const auto decoded = library.decode (encodeAs (extension, 6));
        EXPECT_TRUE (decoded.isDecoding);
        EXPECT_EQ (decoded.record.channels, 6);
        EXPECT_EQ (decoded.frames(), sourceFrames) << extension;
    }
}

TEST_F (BadInput, VideoAloneHasNoAudioStream)
{
    const auto video =
        EncodedFiles::runFfmpeg ({ "-f", "lavfi", "-i", "testsrc=duration=0.4:size=64x48", "-c:v", "mpeg4",
                                   "-f", "mp4", folder.file ("v.m4a").getFullPathName() });
    const auto decoded = library.decode (video);
    EXPECT_TRUE (decoded.isOpen);
    EXPECT_EQ (decoded.streamCount, 1);
    EXPECT_FALSE (decoded.hasAudio);
    EXPECT_FALSE (decoded.isDecoding);
}

TEST_F (BadInput, ACoverPictureIsPassedOver)
{
    const auto picture = EncodedFiles::runFfmpeg ({ "-f", "lavfi", "-i", "testsrc=size=64x48", "-frames:v",
                                                    "1", folder.file ("cover.png").getFullPathName() });
    for (const auto* extension : { ".mp3", ".m4a", ".flac" })
    {
        const auto file = EncodedFiles::runFfmpeg (
            { "-i", noise().getFullPathName(), "-i", picture.getFullPathName(), "-map", "0", "-map", "1",
              "-c:v", "copy", "-disposition:v", "attached_pic",
              folder.file (juce::String ("covered") + extension).getFullPathName() });
        const auto decoded = library.decode (file);
        EXPECT_EQ (decoded.streamCount, 2) << extension;
        EXPECT_EQ (decoded.frames(), sourceFrames) << extension;
    }
}

TEST_F (BadInput, NamesOfAnyScriptWithColonsOrTheWrongExtensionOpen)
{
    for (const auto* name :
         { "Mañana – 夜のクラブ 🎧.mp3", "file:a b%20c.mp3", "http:x.mp3", "-i.mp3", "a|b?c#d.mp3" })
    {
        const auto file = folder.file (juce::String::fromUTF8 (name));
        ASSERT_TRUE (encodeAs (".mp3").copyFileTo (file));
        EXPECT_EQ (library.decode (file).frames(), sourceFrames) << name;
    }
    const auto file = folder.file ("really-a-flac.mp3");
    ASSERT_TRUE (encodeAs (".flac").copyFileTo (file));
    EXPECT_EQ (library.decode (file).frames(), sourceFrames);
}

TEST_F (BadInput, APartOfAnotherFormatIsLeftOut)
{
    const juce::StringArray bare { "-c:a", "libmp3lame", "-write_xing", "0", "-id3v2_version", "0" };
    juce::StringArray other (bare);
    other.addArray ({ "-ar", "48000", "-ac", "1" });
    // Longer than what is looked at to find out the format.
    const auto first = encoded ("first.mp3", bare, 4 * 44100);
    const auto second = encoded ("second.mp3", other, 4 * 44100);
    const auto alone = library.decode (first);

    juce::MemoryBlock bytes;
    ASSERT_TRUE (second.loadFileAsData (bytes));
    const auto joined = folder.file ("joined.mp3");
    ASSERT_TRUE (first.copyFileTo (joined));
    ASSERT_TRUE (joined.appendData (bytes.getData(), bytes.getSize()));
    const auto decoded = library.decode (joined);

    EXPECT_EQ (decoded.record.channels, 2);
    EXPECT_EQ (decoded.record.sampleRate, 44100u);
    EXPECT_GT (decoded.lostPackets, 100);
    EXPECT_EQ (decoded.samples, alone.samples);
}

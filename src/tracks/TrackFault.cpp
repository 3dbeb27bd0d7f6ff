#include "tracks/TrackFault.h"

#include "support/AudioThread.h"
#include "support/files/RegularFile.h"
#include "support/language/Translate.h"
#include "tracks/AdecTrack.h"
#include "tracks/TrackDecoder.h"

#include <algorithm>
#include <array>
#include <memory>

namespace
{
/** The name of an encrypted sample entry in an MP4, and the GUIDs of ASF's two encryption objects. */
constexpr std::array<unsigned char, 4> mp4Protected { 'd', 'r', 'm', 's' };
constexpr std::array<unsigned char, 16> asfEncryption { 0xFB, 0xB3, 0x11, 0x22, 0x23, 0xBD, 0xD2, 0x11,
                                                        0xB4, 0xB7, 0x00, 0xA0, 0xC9, 0x55, 0xFC, 0x6E };
constexpr std::array<unsigned char, 16> asfExtendedEncryption { 0x14, 0xE6, 0x8A, 0x29, 0x22, 0x26,
                                                                0x17, 0x4C, 0xB9, 0x35, 0xDA, 0xE0,
                                                                0x7E, 0xE9, 0x28, 0x9C };

constexpr juce::int64 searchedBytes = 1 << 18; // of either end

template <size_t size>
bool holds (const juce::MemoryBlock& bytes, const std::array<unsigned char, size>& mark)
{
    const auto* data = static_cast<const unsigned char*> (bytes.getData());
    return std::search (data, data + bytes.getSize(), mark.begin(), mark.end()) != data + bytes.getSize();
}

bool isProtected (const juce::File& file, juce::FileInputStream& stream)
{
    const auto isMp4 = file.hasFileExtension ("m4a;m4p;mp4;aac"), isAsf = file.hasFileExtension ("wma;asf");
    if (file.hasFileExtension ("m4p"))
        return true;
    if (!isMp4 && !isAsf)
        return false;
    for (const auto from :
         { juce::int64 { 0 }, std::max<juce::int64> (0, stream.getTotalLength() - searchedBytes) })
    {
        juce::MemoryBlock bytes;
        stream.setPosition (from);
        stream.readIntoMemoryBlock (bytes, searchedBytes);
        if (isMp4 ? holds (bytes, mp4Protected)
                  : holds (bytes, asfEncryption) || holds (bytes, asfExtendedEncryption))
            return true;
    }
    return false;
}
}

juce::String faultOfTrack (const juce::File& file, const AdecSharedLibrary& decoder)
{
    assertMayBlock();
    if (!file.exists())
        return tr ("The file does not exist.");
    if (file.isDirectory())
        return tr ("That is a folder.");
    if (!isRegularFile (file))
        return tr ("That is a pipe or a device, and no file.");
    juce::FileInputStream stream (file);
    if (!stream.openedOk())
        return tr ("The file can't be opened for reading.");
    if (stream.getTotalLength() == 0)
        return tr ("The file is empty.");
    if (isProtected (file, stream))
        return tr ("The file is copy-protected.");
    if (!decoder.isLoaded())
        return tr ("The decoder library is missing.");
    const AdecTrack track (decoder, file);
    if (track.channels() > 2)
        return tr ("The file has more than two channels.");
    if (track.sampleRate() > AdecTrack::highestRate)
        return tr ("The file states a sample rate above 384 kHz.");
    return tr ("The file is damaged or holds no audio.");
}

std::function<juce::String (const juce::File&)> importJudge (const juce::File& decoderLibrary)
{
    return [decoder = std::make_shared<const AdecSharedLibrary> (decoderLibrary)] (const juce::File& file)
    {
        return !decoder->isLoaded() || hasAudio (file, *decoder) ? juce::String()
                                                                 : faultOfTrack (file, *decoder);
    };
}

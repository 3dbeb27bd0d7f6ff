#include "tracks/AdecTrack.h"

#include "support/AudioThread.h"
#include "tracks/SampleConversion.h"

AdecTrack::AdecTrack (const AdecSharedLibrary& library, const juce::File& path) : adec (library)
{
    assertMayBlock();
    file = adec.adec_open_filename (path.getFullPathName().toRawUTF8());
    if (file == nullptr)
        return;
    AdecFileRecord info {};
    info.recordSize = sizeof (info);
    if (adec.adec_file_info (file, &info) != 0)
        return;
    for (int32_t i = 0; i < info.streamCount; ++i)
        chooseStream (i);
    if (stream == nullptr)
        return;
    bufferSize = adec.adec_get_audio_buffer_size();
    if (bufferSize > 0)
        buffer = static_cast<std::byte*> (adec.av_malloc (static_cast<size_t> (bufferSize)));
}

AdecTrack::~AdecTrack()
{
    if (buffer != nullptr)
        adec.av_free (buffer);
    adec.adec_close_stream (stream);
    adec.adec_close_file (file);
}

bool AdecTrack::isPlayable() const noexcept
{
    return buffer != nullptr && chosen.sampleRate > 0 && chosen.sampleRate <= highestRate
           && bytesPerSample (chosen.sampleFormat) > 0 && (chosen.channels == 1 || chosen.channels == 2);
}

size_t AdecTrack::mostFrames() const noexcept
{
    return static_cast<size_t> (bufferSize)
           / (static_cast<size_t> (bytesPerSample (chosen.sampleFormat))
              * static_cast<size_t> (chosen.channels));
}

void AdecTrack::chooseStream (int32_t index)
{
    AdecStreamRecord info {};
    info.recordSize = sizeof (info);
    if (adec.adec_stream_info (file, index, &info) != 0 || info.type != adecStreamAudio)
        return;
    adec.adec_close_stream (stream);
    stream = adec.adec_open_stream (file, index);
    streamIndex = index;
    chosen = info;
}

void AdecTrack::decode (const Sink& sink)
{
    assertMayBlock();
    while (decodeNext (sink))
    {
    }
}

bool AdecTrack::decodeNext (const Sink& sink)
{
    AdecPacketRecord packet {};
    packet.recordSize = sizeof (packet);
    while (adec.adec_read (file, &packet) == 0)
        if (packet.streamIndex == streamIndex)
            return decodePacket (packet, sink);
    return false;
}

bool AdecTrack::decodePacket (const AdecPacketRecord& packet, const Sink& sink)
{
    const auto* data = packet.data;
    auto remaining = packet.dataSize;
    while (remaining > 0)
    {
        int32_t bytes = bufferSize;
        const auto used = adec.adec_decode_audio (stream, data, remaining, buffer, &bytes);
        if (used < 0 || (used == 0 && bytes <= 0))
            return true; // what is left of the packet is lost
        data += used;
        remaining -= used;
        if (bytes > 0 && bytes <= bufferSize && !sink ({ buffer, static_cast<size_t> (bytes) }))
            return false;
    }
    return true;
}

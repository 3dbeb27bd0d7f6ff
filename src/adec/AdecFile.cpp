#include "adec/AdecFile.h"

#include "adec/PackedTag.h"

#include <algorithm>
#include <filesystem>
#include <string>

namespace
{
/** The containers that audio files come in. Everything else FFmpeg knows stays out: playlists that would open other
    files, subtitle formats that take any text for theirs. */
constexpr const char* containers = "mp3,mov,wav,w64,aiff,asf,flac,ogg,aac";

/** Sample entries whose content is encrypted decode to noise as what they wrap. */
bool isProtected (const AVCodecParameters& parameters)
{
    return parameters.codec_tag == MKTAG ('d', 'r', 'm', 's')
           || parameters.codec_tag == MKTAG ('e', 'n', 'c', 'a');
}

bool isProtected (const AVFormatContext& format)
{
    return av_dict_get (format.metadata, "ASF_Protection_Type", nullptr, 0) != nullptr;
}
}

std::unique_ptr<AdecFile> AdecFile::open (const char* utf8Path)
{
    // A pipe or a device would block for ever.
    std::error_code error;
    if (utf8Path == nullptr || !std::filesystem::is_regular_file (utf8Path, error))
        return nullptr;
    auto file = std::make_unique<AdecFile>();
    if (file->packet == nullptr)
        return nullptr;
    file->timings = adec::readMp4Timing (adec::readMp4Movie (utf8Path));

    AVDictionary* options = nullptr;
    av_dict_set (&options, "protocol_whitelist", "file,subfile", 0);
    av_dict_set (&options, "format_whitelist", containers, 0);
    // The cut is ours, to the frame, if the tables could be read; then the demuxer gives every packet.
    if (!file->timings.empty())
        av_dict_set (&options, "ignore_editlist", "1", 0);

    AVFormatContext* format = nullptr;
    // The prefix keeps a name with a colon from being taken for a URL.
    auto url = "file:" + std::string (utf8Path);
    if (const auto tagEnd = adec::packedTagEnd (utf8Path); tagEnd > 0)
        url = "subfile,,start," + std::to_string (tagEnd) + ",end,0,,:" + url;
    const auto result = avformat_open_input (&format, url.c_str(), nullptr, &options);
    const adec::AvPointer<AVDictionary> leftOver (options);
    if (result < 0)
        return nullptr;
    file->format.reset (format);
    if (isProtected (*format) || avformat_find_stream_info (format, nullptr) < 0)
        return nullptr;

    for (int32_t i = 0; i < file->streamCount(); ++i)
        format->streams[i]->discard = AVDISCARD_ALL;
    return file;
}

AdecFile::~AdecFile()
{
    for (auto* link : links)
        link->file = nullptr;
}

AVStream* AdecFile::stream (int32_t index) const
{
    return index >= 0 && index < streamCount() ? format->streams[index] : nullptr;
}

bool AdecFile::isDecodable (const AVStream& stream)
{
    const auto& parameters = *stream.codecpar;
    const auto packed = av_get_packed_sample_fmt (static_cast<AVSampleFormat> (parameters.format));
    const bool isExpressible = packed >= AV_SAMPLE_FMT_U8 && packed <= AV_SAMPLE_FMT_DBL
                               && parameters.sample_rate > 0 && parameters.ch_layout.nb_channels > 0;
    return parameters.codec_type == AVMEDIA_TYPE_AUDIO && isExpressible && !isProtected (parameters)
           && avcodec_find_decoder (parameters.codec_id) != nullptr;
}

std::optional<AdecFile::Cut> AdecFile::cutOf (const AVStream& stream) const
{
    if (timings.empty())
        return std::nullopt;
    const auto timing = std::find_if (timings.begin(), timings.end(),
                                      [&] (const auto& candidate) { return candidate.trackId == stream.id; });
    if (timing == timings.end())
        return Cut {};

    const auto frames = [&] (int64_t ticks)
    {
        const auto rescaled = av_rescale (ticks, stream.codecpar->sample_rate, timing->timescale);
        return rescaled >= 0 ? rescaled : INT64_MAX; // negative where it doesn't fit
    };
    const Cut tables { frames (timing->start), frames (timing->end) };

    const auto* const entry = av_dict_get (format->metadata, "iTunSMPB", nullptr, 0);
    const auto tag = adec::parseGaplessTag (entry != nullptr ? entry->value : nullptr);
    if (tag && tag->priming + tag->frames <= frames (timing->length))
        return Cut { tag->priming, tag->priming + tag->frames };
    return tables;
}

void AdecFile::attach (Link& link)
{
    link.file = this;
    links.push_back (&link);
    format->streams[link.streamIndex]->discard = AVDISCARD_DEFAULT;
}

void AdecFile::detach (Link& link)
{
    const auto found = std::find (links.begin(), links.end(), &link);
    if (static_cast<size_t> (found - links.begin()) < flushed)
        --flushed;
    links.erase (found);
    format->streams[link.streamIndex]->discard = AVDISCARD_ALL;
    link.file = nullptr;
}

bool AdecFile::isAttached (int32_t index) const
{
    return std::any_of (links.begin(), links.end(),
                        [=] (const auto* link) { return link->streamIndex == index; });
}

bool AdecFile::readPacket()
{
    // A damaged place shall not end the track, but a demuxer that only ever fails must not be asked for ever.
    constexpr int mostFailures = 64;
    for (int failures = 0; failures < mostFailures;)
    {
        av_packet_unref (packet.get());
        const auto error = av_read_frame (format.get(), packet.get());
        if (error == AVERROR_EOF || (error < 0 && format->pb != nullptr && avio_feof (format->pb)))
            return false;
        if (error < 0)
            ++failures;
        else if (packet->size > 0 && isAttached (packet->stream_index))
            return true;
    }
    return false;
}

bool AdecFile::readFlush (AdecPacketRecord& record)
{
    if (flushed >= links.size())
        return false;
    record.streamIndex = links[flushed++]->streamIndex;
    record.data = flushBytes;
    record.dataSize = sizeof (flushBytes);
    return true;
}

bool AdecFile::read (AdecPacketRecord& record)
{
    ++packetCount;
    if (!isAtEnd && !links.empty() && readPacket())
    {
        record.streamIndex = packet->stream_index;
        record.data = packet->data;
        record.dataSize = packet->size;
        return true;
    }
    av_packet_unref (packet.get());
    isAtEnd = isAtEnd || !links.empty();
    return readFlush (record);
}

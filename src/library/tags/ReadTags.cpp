#include "library/tags/ReadTags.h"

#include "library/tags/TagFile.h"

#include <asffile.h>
#include <flacfile.h>
#include <id3v2tag.h>
#include <mp4file.h>
#include <mpegfile.h>
#include <popularimeterframe.h>
#include <wavfile.h>
#include <xiphcomment.h>

#include <algorithm>
#include <array>

namespace
{
constexpr std::array commonColumns { SongColumn::title,   SongColumn::artist, SongColumn::album,
                                     SongColumn::comment, SongColumn::genre,  SongColumn::year,
                                     SongColumn::tracknum };

/** Reads what tags of all kinds have. */
void readCommon (const TagLib::Tag& tag, SongRecord& record)
{
    record[SongColumn::title] = toText (tag.title());
    record[SongColumn::artist] = toText (tag.artist());
    record[SongColumn::album] = toText (tag.album());
    record[SongColumn::comment] = toText (tag.comment());
    record[SongColumn::genre] = toText (tag.genre());
    record[SongColumn::year] = juce::String (tag.year());
    record[SongColumn::tracknum] = juce::String (tag.track());
}

/** Sets what stands in a tag's tempo field, unless that is empty. */
void setTempo (SongRecord& record, const juce::String& text)
{
    if (text.isNotEmpty())
        record[SongColumn::bpm] = text;
}

void readId3v2 (const TagLib::ID3v2::Tag& tag, SongRecord& record)
{
    if (const auto& tempos = tag.frameList ("TBPM"); !tempos.isEmpty())
        setTempo (record, toText (tempos.front()->toString()));
    if (const auto& ratings = tag.frameList ("POPM"); !ratings.isEmpty())
        if (const auto* rating = dynamic_cast<const TagLib::ID3v2::PopularimeterFrame*> (ratings.front()))
            record[SongColumn::rating] = juce::String (starsOfPopm (rating->rating()));
}

juce::String tempoOf (const TagLib::ASF::Attribute& attribute)
{
    return attribute.type() == TagLib::ASF::Attribute::UnicodeType ? toText (attribute.toString())
                                                                   : juce::String (attribute.toUInt());
}

void readByType (const TagFile& file, SongRecord& record)
{
    if (auto* mpeg = file.as<TagLib::MPEG::File>(); mpeg != nullptr && mpeg->ID3v2Tag() != nullptr)
        readId3v2 (*mpeg->ID3v2Tag(), record);
    else if (auto* mp4 = file.as<TagLib::MP4::File>(); mp4 != nullptr && mp4->tag() != nullptr)
    {
        if (mp4->tag()->contains ("tmpo"))
            setTempo (record, juce::String (mp4->tag()->item ("tmpo").toInt()));
    }
    else if (auto* flac = file.as<TagLib::FLAC::File>(); flac != nullptr && flac->xiphComment() != nullptr)
    {
        const auto& fields = flac->xiphComment()->fieldListMap();
        if (fields.contains ("BPM") && !fields["BPM"].isEmpty())
            setTempo (record, toText (fields["BPM"].front()));
    }
    else if (auto* asf = file.as<TagLib::ASF::File>(); asf != nullptr && asf->tag() != nullptr)
    {
        if (const auto tempos = asf->tag()->attribute ("WM/BeatsPerMinute"); !tempos.isEmpty())
            setTempo (record, tempoOf (tempos.front()));
    }
}

void readFile (const juce::String& path, SongRecord& record)
{
    const TagFile file (path, true);
    if (!file.isUsable())
        return;

    readCommon (file.tag(), record);
    // TagLib gives a WAV file's ID3v2 tag alone; what that leaves open may stand in the INFO list.
    if (auto* wav = file.as<TagLib::RIFF::WAV::File>(); wav != nullptr && wav->hasInfoTag())
    {
        SongRecord info;
        readCommon (*wav->InfoTag(), info);
        for (const auto column : commonColumns)
            if (record[column].isEmpty() || record[column] == "0")
                record[column] = info[column];
    }
    if (const auto* audio = file.audio())
    {
        record[SongColumn::duration] = juce::String (audio->lengthInSeconds());
        record[SongColumn::bitrate] = juce::String (audio->bitrate());
        record[SongColumn::samplerate] = juce::String (audio->sampleRate());
        record[SongColumn::channels] = juce::String (audio->channels());
    }
    readByType (file, record);
}
}

int starsOfPopm (int byte)
{
    constexpr std::array firstBytes { 1, 64, 128, 192, 230 };
    return static_cast<int> (std::upper_bound (firstBytes.begin(), firstBytes.end(), byte)
                             - firstBytes.begin());
}

void readTags (const juce::String& path, SongRecord& record)
{
    const auto name = path.fromLastOccurrenceOf ("/", false, false);
    const auto dot = name.lastIndexOfChar ('.');
    record[SongColumn::filename] = path;
    record[SongColumn::format] = dot < 0 ? juce::String() : name.substring (dot);
    try
    {
        readFile (path, record);
    }
    catch (const std::exception&)
    {
        // A file that drives TagLib beyond the memory is one that can't be read.
    }
    if (record[SongColumn::title].isEmpty())
        record[SongColumn::title] = dot <= 0 ? name : name.substring (0, dot);
}

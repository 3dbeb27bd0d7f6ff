#include "library/tags/WriteTag.h"

#include "library/tags/TagFile.h"
#include "library/tags/WorkingCopy.h"
#include "support/files/RegularFile.h"

#include <aifffile.h>
#include <id3v2header.h>
#include <id3v2tag.h>
#include <mpegfile.h>
#include <wavfile.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <iterator>
#include <mutex>
#include <optional>
#include <vector>

namespace
{
namespace fs = std::filesystem;

unsigned int wholeNumber (const juce::String& text)
{
    return static_cast<unsigned int> (juce::jmax (0, text.getIntValue()));
}

constexpr std::array fieldsOfTags { SongField::artist, SongField::album, SongField::year,
                                    SongField::genre,  SongField::title, SongField::trackNumber,
                                    SongField::comment };

bool isInTags (SongField field)
{
    return std::find (fieldsOfTags.begin(), fieldsOfTags.end(), field) != fieldsOfTags.end();
}

void setField (TagLib::Tag& tag, SongField field, const juce::String& text)
{
    const TagLib::String value (text.toRawUTF8(), TagLib::String::UTF8);
    switch (field)
    {
    case SongField::artist:
        return tag.setArtist (value);
    case SongField::album:
        return tag.setAlbum (value);
    case SongField::year:
        return tag.setYear (wholeNumber (text));
    case SongField::genre:
        return tag.setGenre (value);
    case SongField::title:
        return tag.setTitle (value);
    case SongField::trackNumber:
        return tag.setTrack (wholeNumber (text));
    case SongField::comment:
        return tag.setComment (value);
    default:
        return;
    }
}

/** The version to write: that of the tag which the file has, else the newest. */
TagLib::ID3v2::Version versionFor (bool hasTag, const TagLib::ID3v2::Tag* tag)
{
    return hasTag && tag->header()->majorVersion() < 4 ? TagLib::ID3v2::v3 : TagLib::ID3v2::v4;
}

bool save (TagFile& file)
{
    using namespace TagLib;
    if (auto* mpeg = file.as<MPEG::File>())
        return mpeg->save (MPEG::File::AllTags, File::StripNone,
                           versionFor (mpeg->hasID3v2Tag(), mpeg->ID3v2Tag()));
    if (auto* wav = file.as<RIFF::WAV::File>())
        return wav->save (RIFF::WAV::File::AllTags, File::StripNone,
                          versionFor (wav->hasID3v2Tag(), wav->ID3v2Tag()));
    if (auto* aiff = file.as<RIFF::AIFF::File>())
        return aiff->save (versionFor (aiff->hasID3v2Tag(), aiff->tag()));
    return file.save();
}

/** @returns the length in ms, or nothing if the file is not sound */
std::optional<int> soundLength (const TagFile& file)
{
    if (!file.isUsable())
        return {};
    return file.audio() != nullptr ? file.audio()->lengthInMilliseconds() : 0;
}
}

bool writeTags (const SongRecord& record, std::span<const SongField> fields)
{
    const auto isField = [] (SongField field)
    { return field >= SongField::artist && field <= SongField::listOrder; };
    if (!std::all_of (fields.begin(), fields.end(), isField))
        return false;
    std::vector<SongField> inTag;
    std::copy_if (fields.begin(), fields.end(), std::back_inserter (inTag), isInTags);
    if (inTag.empty())
        return true;

    static std::mutex oneAtATime;
    const std::scoped_lock lock (oneAtATime);
    try
    {
        std::error_code error;
        // Of a link it is the file behind it that changes.
        const auto file = fs::canonical (record[SongColumn::filename].toStdString(), error);
        if (error
            || !isRegularFile (juce::File::createFileWithoutCheckingPath (record[SongColumn::filename])))
            return false;

        WorkingCopy copy (file);
        const auto length = copy.isMade() ? soundLength (TagFile (copy.path(), true)) : std::nullopt;
        if (!length)
            return false;
        {
            TagFile tags (copy.path(), false, TagFile::Access::write);
            for (const auto field : inTag)
                setField (tags.tag(), field, record[columnOf (field)]);
            if (!save (tags))
                return false;
        }
        return soundLength (TagFile (copy.path(), true)) == length && copy.takePlace();
    }
    catch (const std::exception&)
    {
        return false;
    }
}

bool writeTag (const SongRecord& record, SongField field)
{
    return writeTags (record, { &field, 1 });
}

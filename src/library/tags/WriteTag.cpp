#include "library/tags/WriteTag.h"

#include "library/tags/TagFile.h"

#include <aifffile.h>
#include <id3v2header.h>
#include <id3v2tag.h>
#include <mpegfile.h>
#include <wavfile.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>

namespace
{
namespace fs = std::filesystem;

/** A copy of a file, of the same kind and beside it, which goes unless it takes the file's place. */
class WorkingCopy
{
public:
    explicit WorkingCopy (const fs::path& file)
        : original (file),
          copy (file.parent_path()
                / (".platterdex-" + juce::Uuid().toString().toStdString() + file.extension().string()))
    {
        std::error_code error;
        isMade = fs::copy_file (original, copy, error) && !error;
    }

    ~WorkingCopy()
    {
        std::error_code error;
        fs::remove (copy, error);
    }

    WorkingCopy (const WorkingCopy&) = delete;
    WorkingCopy& operator= (const WorkingCopy&) = delete;

    bool takePlace() const
    {
        std::error_code error;
        fs::rename (copy, original, error);
        return !error;
    }

    juce::String path() const { return juce::String::fromUTF8 (copy.c_str()); }

    bool isMade = false;

private:
    const fs::path original, copy;
};

unsigned int wholeNumber (const juce::String& text)
{
    return static_cast<unsigned int> (juce::jmax (0, text.getIntValue()));
}

constexpr std::array fieldsOfTags { SongField::artist, SongField::album, SongField::year,
                                    SongField::genre,  SongField::title, SongField::trackNumber,
                                    SongField::comment };

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

bool writeTag (const SongRecord& record, SongField field)
{
    if (field < SongField::artist || field > SongField::listOrder)
        return false;
    if (std::find (fieldsOfTags.begin(), fieldsOfTags.end(), field) == fieldsOfTags.end())
        return true;
    try
    {
        std::error_code error;
        // Of a link it is the file behind it that changes.
        const auto file = fs::canonical (record[SongColumn::filename].toStdString(), error);
        if (error || !fs::is_regular_file (file, error))
            return false;

        const WorkingCopy copy (file);
        const auto length = copy.isMade ? soundLength (TagFile (copy.path(), true)) : std::nullopt;
        if (!length)
            return false;
        {
            TagFile tags (copy.path(), false, TagFile::Access::write);
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

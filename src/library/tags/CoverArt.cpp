#include "library/tags/CoverArt.h"

#include "library/tags/Picture.h"
#include "library/tags/TagFile.h"

#include <asffile.h>
#include <attachedpictureframe.h>
#include <flacfile.h>
#include <id3v2tag.h>
#include <mp4file.h>
#include <mpegfile.h>

namespace
{
TagLib::ByteVector pictureOf (const TagFile& file)
{
    if (auto* mpeg = file.as<TagLib::MPEG::File>(); mpeg != nullptr && mpeg->ID3v2Tag() != nullptr)
    {
        for (const auto* frame : mpeg->ID3v2Tag()->frameList ("APIC"))
            if (const auto* picture = dynamic_cast<const TagLib::ID3v2::AttachedPictureFrame*> (frame))
                return picture->picture();
    }
    else if (auto* mp4 = file.as<TagLib::MP4::File>(); mp4 != nullptr && mp4->tag() != nullptr)
    {
        const auto covers = mp4->tag()->item ("covr").toCoverArtList();
        if (!covers.isEmpty())
            return covers.front().data();
    }
    else if (auto* flac = file.as<TagLib::FLAC::File>())
    {
        const auto pictures = flac->pictureList();
        if (!pictures.isEmpty())
            return pictures.front()->data();
    }
    else if (auto* asf = file.as<TagLib::ASF::File>(); asf != nullptr && asf->tag() != nullptr)
    {
        const auto pictures = asf->tag()->attribute ("WM/Picture");
        if (!pictures.isEmpty())
            return pictures.front().toPicture().picture();
    }
    return {};
}
}

juce::Image readCoverArt (const juce::String& path, int largestSide)
{
    try
    {
        const TagFile file (path, false);
        if (!file.isUsable())
            return {};
        const auto bytes = pictureOf (file);
        return decodePicture ({ reinterpret_cast<const uint8_t*> (bytes.data()), bytes.size() }, largestSide);
    }
    catch (const std::exception&)
    {
        return {};
    }
}

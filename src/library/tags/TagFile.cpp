#include "library/tags/TagFile.h"

#include "support/AudioThread.h"

#include <filesystem>

TagFile::TagFile (const juce::String& path, bool withAudio, Access access)
{
    assertMayBlock();
    const auto* name = path.toRawUTF8();
    if (std::error_code error; !std::filesystem::is_regular_file (name, error))
        return;
    stream = std::make_unique<TagLib::FileStream> (name, access == Access::read);
    if (stream->isOpen())
        ref.emplace (stream.get(), withAudio);
}

#include "library/tags/TagFile.h"

#include "library/tags/TagBounds.h"
#include "support/AudioThread.h"
#include "support/files/RegularFile.h"

TagFile::TagFile (const juce::String& path, bool withAudio, Access access)
{
    assertMayBlock();
    if (!isRegularFile (juce::File::createFileWithoutCheckingPath (path)))
        return;
    const auto* name = path.toRawUTF8();
    stream = std::make_unique<TagLib::FileStream> (name, access == Access::read);
    if (stream->isOpen() && TagBounds::hold (*stream))
        ref.emplace (stream.get(), withAudio);
}

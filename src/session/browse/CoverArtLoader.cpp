#include "session/browse/CoverArtLoader.h"

namespace
{
constexpr Worker::Key newest = 0;
}

std::optional<juce::Image> CoverArtLoader::find (const juce::String& path, std::function<void()> read)
{
    auto found = cache.find (path);
    if (!found)
        worker.post (newest, { [this, path, read = std::move (read)] (const std::stop_token&)
                               {
                                   cache.read (path);
                                   calls.post (read);
                               } });
    return found;
}

#include "plugins/slot/SlotsKeeper.h"

#include "support/files/ReplaceFile.h"

namespace
{
constexpr Worker::Key newestSlots = 0;
}

SlotsKeeper::SlotsKeeper (juce::File f) : file (std::move (f)) {}

SlotsKeeper::~SlotsKeeper()
{
    worker.wait();
}

SavedSlots SlotsKeeper::read() const
{
    juce::MemoryBlock bytes;
    if (!file.existsAsFile() || !file.loadFileAsData (bytes))
        bytes.reset();
    return SlotsFile::read ({ static_cast<const char*> (bytes.getData()), bytes.getSize() })
        .value_or (SavedSlots {});
}

void SlotsKeeper::write (SavedSlots slots)
{
    if (file == juce::File())
        return;
    worker.post (newestSlots, { [this, slots = std::move (slots)] (const std::stop_token&)
                                {
                                    auto bytes = SlotsFile::write (slots);
                                    if (bytes == written)
                                        return;
                                    if (replaceFile (file, bytes.data(), bytes.size()))
                                        written = std::move (bytes);
                                    else
                                        hasFailed = true;
                                } });
}

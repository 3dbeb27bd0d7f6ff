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

SlotsFile::Read SlotsKeeper::read() const
{
    juce::MemoryBlock bytes;
    if (!file.existsAsFile() || !file.loadFileAsData (bytes))
        return {};
    auto found = SlotsFile::read ({ static_cast<const char*> (bytes.getData()), bytes.getSize() });
    if (found.isDamaged)
        juce::ignoreUnused (
            file.copyFileTo (damagedFile())); // where it can't be copied it stays until the next change
    return found;
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

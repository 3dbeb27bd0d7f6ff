#pragma once

#include "support/Worker.h"
#include "tracks/FileStreamPlayer.h"

#include <array>
#include <atomic>
#include <memory>

/** The outline of a file, as loud as it is at so many places: read in a moment, since it hears a tenth of a second at each of them
    instead of all the file. Message thread; reads on a worker. */
class PreviewWave
{
public:
    static constexpr int columns = 160;

    /** The peak at each place, 0 to 255; known from the left on. */
    struct Outline
    {
        std::array<std::atomic<uint8_t>, columns> peaks {};
        std::atomic<int> known { 0 };
    };

    explicit PreviewWave (FileStreamPlayer&);

    /** Reads another file; an empty path forgets the last one. */
    void read (const juce::String& path);

    /** The outline of the last file, which grows while it is read. */
    const Outline& outline() const noexcept { return *current; }

    void settle() { worker.wait(); }

private:
    juce::AudioFormatManager& formats;
    std::shared_ptr<Outline> current = std::make_shared<Outline>();
    Worker worker { "previewWave", Worker::Priority::idle }; ///< last: its jobs use all of the above
};

#include "tracks/FileStreamPlayer.h"

#include "support/files/RegularFile.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

namespace
{
constexpr int readAheadFrames = 32768;
constexpr int preparedFrames = 512;
constexpr int chunkFrames = 2048;

/** Read by load() itself, so that play() sounds at once. */
constexpr int prefillFrames = 8192;

/** Rates outside are those of a damaged file; they would ask the resampler for absurd amounts of memory. */
constexpr double lowestRate = 1000.0, highestRate = 768000.0;

/** 12 dB above full scale: no real file goes beyond, a damaged one of floats does, and it is for headphones. */
constexpr float loudest = 4.0f;

bool isRate (double rate) noexcept
{
    return rate >= lowestRate && rate <= highestRate;
}

juce::String firstOf (const juce::StringPairArray& tags, std::initializer_list<const char*> keys)
{
    for (const auto* key : keys)
        if (auto text = tags[key].trim(); text.isNotEmpty())
            return text;
    return {};
}

FileStreamPlayer::Track describe (const juce::File& file, const juce::AudioFormatReader& reader)
{
    const auto& tags = reader.metadataValues;
    FileStreamPlayer::Track track;
    track.path = file.getFullPathName();
    track.title = firstOf (tags, { "id3title", "INAM" });
    track.artist = firstOf (tags, { "id3artist", "IART" });
    track.album = firstOf (tags, { "id3album", "IPRD" });
    track.seconds = static_cast<double> (reader.lengthInSamples) / reader.sampleRate;
    if (track.title.isEmpty())
        track.title = file.getFileNameWithoutExtension();
    return track;
}
}

/** One file on its way into the ring. The ring has one writer, which is the thread, load() before the stream is handed
    to the thread, or offline the audio thread; and one reader, the audio thread. */
class FileStreamPlayer::Stream : public juce::TimeSliceClient
{
public:
    /** @param rate   the rate of the frames in the ring, in Hz
        @param from   the place of the first frame, in seconds */
    Stream (std::unique_ptr<juce::AudioFormatReader> reader, double rate, double from)
        : source (reader.release(), true),
          frameSeconds (1.0 / rate),
          firstSeconds (from)
    {
        // The transport does its own reading ahead under a lock that whoever pulls from it waits for while the disk
        // is read. So it is given none, and pulled from the thread.
        const auto fileRate = source.getAudioFormatReader()->sampleRate;
        transport.setSource (&source, 0, nullptr, rate == fileRate ? 0.0 : fileRate, 2);
        transport.prepareToPlay (preparedFrames, rate);
        transport.setPosition (from);
        transport.start();
    }

    ~Stream() override { transport.setSource (nullptr); }

    int useTimeSlice() override
    {
        fill (chunkFrames);
        if (ended)
            return -1; // leaves the thread
        return fifo.getFreeSpace() >= chunkFrames ? 0 : 20;
    }

    /** Reads up to `frames` frames of the file into the ring, as far as there is room. */
    void fill (int frames)
    {
        if (ended)
            return;
        {
            const auto region = fifo.write (std::min (frames, fifo.getFreeSpace()));
            readInto (region.startIndex1, region.blockSize1);
            readInto (region.startIndex2, region.blockSize2);
        } // whose end hands the frames over
        ended = !transport.isPlaying();
    }

    /** Adds up to `frames` frames of the ring, times the fade. @returns how many there were. */
    PX_AUDIO_THREAD int mix (float* left, float* right, int frames, GainRamp& fade) noexcept
    {
        const auto count = std::min (frames, fifo.getNumReady());
        const auto region = fifo.read (count);
        const auto add = [&] (int start, int size)
        {
            const auto* sourceLeft = ring.getReadPointer (0, start);
            const auto* sourceRight = ring.getReadPointer (1, start);
            for (int i = 0; i < size; ++i)
            {
                const auto gain = static_cast<float> (fade.next());
                *left++ += gain * sourceLeft[i];
                *right++ += gain * sourceRight[i];
            }
        };
        add (region.startIndex1, region.blockSize1);
        add (region.startIndex2, region.blockSize2);
        mixed += count;
        return count;
    }

    /** The place behind the last frame that was mixed, in seconds. Audio thread, or while it is kept out. */
    PX_AUDIO_THREAD double position() const noexcept
    {
        return firstSeconds + static_cast<double> (mixed) * frameSeconds;
    }

    /** True once the last frame has left the ring. Audio thread or under the player's command lock. */
    PX_AUDIO_THREAD bool hasFinished() const noexcept { return ended && fifo.getNumReady() == 0; }

private:
    void readInto (int start, int frames)
    {
        if (frames <= 0)
            return;
        // A reader leaves alone what it can't make sense of.
        ring.clear (start, frames);
        transport.getNextAudioBlock ({ &ring, start, frames });
        for (int channel = 0; channel < 2; ++channel)
            for (auto& sample :
                 std::span (ring.getWritePointer (channel, start), static_cast<size_t> (frames)))
                sample = std::isfinite (sample) ? std::clamp (sample, -loudest, loudest) : 0.0f;
    }

    juce::AbstractFifo fifo { readAheadFrames + 1 };
    juce::AudioBuffer<float> ring { 2, readAheadFrames + 1 };
    juce::AudioFormatReaderSource source;
    juce::AudioTransportSource transport;
    const double frameSeconds, firstSeconds;
    int64_t mixed = 0;                 ///< frames; the audio thread's
    std::atomic<bool> ended { false }; ///< set after the last frames were written
};

FileStreamPlayer::FileStreamPlayer (Pacing::Mode m) : mode (m)
{
    formatManager.registerBasicFormats();
    thread.startThread();
}

FileStreamPlayer::~FileStreamPlayer()
{
    unload();
    thread.stopThread (-1);
}

bool FileStreamPlayer::load (const juce::String& path, double fromSeconds)
{
    assertMayBlock();
    const juce::ScopedLock command (commandLock);
    unload();
    if (!juce::File::isAbsolutePath (path))
        return false;
    const juce::File file (path);
    if (!file.existsAsFile())
        return false;

    std::unique_ptr<juce::AudioFormatReader> reader (
        isRegularFile (file) ? formatManager.createReaderFor (file) : nullptr);
    if (reader == nullptr || !isRate (reader->sampleRate) || reader->lengthInSamples <= 0
        || reader->numChannels == 0)
        return false;

    current = describe (file, *reader);
    const double engineRate = outputRate;
    const auto rate = isRate (engineRate) ? engineRate : reader->sampleRate;
    const auto from = juce::jlimit (0.0, current.seconds, fromSeconds);
    auto next = std::make_unique<Stream> (std::move (reader), rate, from);
    next->fill (prefillFrames);
    if (mode == Pacing::Mode::live)
        thread.addTimeSliceClient (next.get());
    replaceStream (std::move (next));
    heardSeconds = from;
    return true;
}

void FileStreamPlayer::replaceStream (std::unique_ptr<Stream> next)
{
    std::unique_ptr<Stream> gone;
    {
        const juce::SpinLock::ScopedLockType sl (streamLock);
        if (stream != nullptr)
        {
            gone = std::exchange (leaving, std::move (stream));
            leavingFade = fade;
            leavingFade.setTarget (0.0);
            leavingFrames = fadeFrames;
        }
        stream = std::move (next);
        fade.reset (0.0);
        fadeFrames = 0;
    }
    if (gone != nullptr)
        thread.removeTimeSliceClient (gone.get());
}

void FileStreamPlayer::unload()
{
    const juce::ScopedLock command (commandLock);
    playing = false;
    replaceStream (nullptr);
    heardSeconds = 0.0;
    current = {};
}

void FileStreamPlayer::seek (double seconds)
{
    assertMayBlock();
    const juce::ScopedLock command (commandLock);
    const bool plays = playing;
    if (current.path.isNotEmpty() && load (juce::String (current.path), seconds))
        playing = plays;
}

void FileStreamPlayer::play()
{
    assertMayBlock();
    const juce::ScopedLock command (commandLock);
    if (stream == nullptr || (stream->hasFinished() && !load (juce::String (current.path))))
        return;
    playing = true;
}

FileStreamPlayer::Track FileStreamPlayer::track() const
{
    assertMayBlock();
    const juce::ScopedLock command (commandLock);
    return current;
}

void FileStreamPlayer::addToMonitor (float* left, float* right, int frames) noexcept
{
    if (left == nullptr || right == nullptr)
        return;
    const juce::SpinLock::ScopedTryLockType attempt (streamLock);
    if (!attempt.isLocked())
        return;
    if (leaving != nullptr && leavingFrames > 0)
    {
        const auto due = std::min (frames, leavingFrames);
        if (mode == Pacing::Mode::offline)
            leaving->fill (due);
        juce::ignoreUnused (leaving->mix (left, right, due, leavingFade)); // what its ring lacks is silence
        leavingFrames -= due;
    }
    if (stream == nullptr)
        return;
    const bool plays = playing;
    if (plays)
        fadeFrames = GainRamp::steps;
    fade.setTarget (plays ? static_cast<float> (levelGain) : 0.0);

    // Once stopped only the fade is played, and the position stays where it ended.
    auto wanted = plays ? frames : std::min (frames, fadeFrames);
    while (wanted > 0)
    {
        if (mode == Pacing::Mode::offline)
            stream->fill (wanted);
        const auto count = stream->mix (left, right, wanted, fade);
        if (count == 0)
            break;
        left += count;
        right += count;
        wanted -= count;
        if (!plays)
            fadeFrames -= count;
    }
    heardSeconds = stream->position();
    if (stream->hasFinished())
        playing = false;
}

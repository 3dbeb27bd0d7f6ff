#include "tracks/FileAnalysis.h"

#include "analysis/files/AnalysisFile.h"
#include "tracks/AdecTrack.h"
#include "tracks/PXAudioSampleBuffer.h"
#include "tracks/SampleConversion.h"
#include "tracks/TrackFault.h"
#include "tracks/TrackMeasure.h"

#include <algorithm>
#include <optional>

namespace
{
/** Takes decoded audio and rests at the intervals that live audio needs. */
class Listening
{
public:
    /** @param isMeasured   look for beats and loudness, beside the sound that is described */
    Listening (const FileAnalysis::Request& r, Pacing& p, double trackRate, bool isMeasured)
        : request (r),
          pacing (p),
          rate (trackRate)
    {
        if (request.sounds != nullptr)
            sound = request.sounds->listenTo (request.track.getFullPathName(), rate, request.isAgain);
        if (isMeasured)
            measure.emplace (rate).setListener (sound.get());
    }

    /** @returns false if nothing more is wanted */
    bool add (const float* left, const float* right, int frames)
    {
        frames = std::min (frames, PXAudioSampleBuffer::maxFrames - total);
        while (frames > 0)
        {
            // In pieces of the pauses' distance, so that one may be due at the end of each.
            const auto piece = std::clamp (distance() - sincePause, 1, frames);
            if (measure)
                measure->add (left, right, piece);
            else
                sound->add (left, right, piece);
            left += piece;
            right += piece;
            frames -= piece;
            total += piece;
            sincePause += piece;
            if (sincePause >= distance() && !rest())
                return false;
        }
        return total < PXAudioSampleBuffer::maxFrames;
    }

    bool isCancelled() const { return cancelled; }
    double seconds() const { return total / rate; }
    TrackAnalysis finish() { return measure->finish (request.tempoRangeIndex); }

    /** True if how the track sounds is still to be described. */
    bool hearsSound() const { return sound != nullptr; }

    void storeSound (const TrackAnalysis& analysis)
    {
        if (sound == nullptr)
            return;
        const auto hasBeats = analysis.beatMarks && !analysis.beatMarks->empty();
        // Unwritten, it is known until the end.
        juce::ignoreUnused (request.sounds->store (request.track.getFullPathName(), *sound,
                                                   hasBeats ? analysis.tempoTracker : 0.0));
    }

private:
    /** Frames from one pause to the next. */
    int distance() const { return pacing.mustRest() ? 1024 : TrackAnalyser::blockFrames; }

    /** @returns false if the work was cancelled */
    bool rest()
    {
        sincePause = 0;
        if (request.progress != nullptr)
            request.progress (seconds());
        pacing.pause();
        cancelled = cancelled || (request.mayGoOn != nullptr && !request.mayGoOn());
        return !cancelled;
    }

    const FileAnalysis::Request& request;
    Pacing& pacing;
    const double rate;
    std::unique_ptr<SoundListener> sound; ///< null: nothing to describe
    std::optional<TrackMeasure> measure;
    int32_t total = 0;
    int sincePause = 0;
    bool cancelled = false;
};
}

FileAnalysis::Result FileAnalysis::run (const Request& request, const AdecSharedLibrary& decoder,
                                        Pacing& pacing)
{
    assertMayBlock();
    Result result;
    const auto stored = AnalysisFile::forTrack (request.folder, request.track);
    if (stored == request.track)
    {
        result.fault = faultOfTrack (request.track, decoder);
        return result;
    }
    if (auto old = request.isAgain ? std::nullopt : AnalysisFile::read (stored); old && old->beatMarks)
    {
        result.analysis = std::move (*old);
        result.wasStored = result.isWritten = true;
        if (request.sounds == nullptr)
            return result;
        if (request.sounds->isKnown (request.track.getFullPathName()))
        {
            request.sounds->tellKnown (request.track.getFullPathName());
            return result;
        }
    }
    AdecTrack track (decoder, request.track);
    result.sampleRate = track.sampleRate();
    if (!track.isPlayable())
    {
        if (result.wasStored)
            return result; // what is known of a file that has gone bad stays
        result.fault = faultOfTrack (request.track, decoder);
        return result;
    }

    Listening listening (request, pacing, track.sampleRate(), !result.wasStored);
    if (result.wasStored && !listening.hearsSound())
        return result;
    std::vector<float> left (track.mostFrames()), right (track.mostFrames());
    track.decode (
        [&] (std::span<const std::byte> samples)
        {
            const auto frames =
                convertToFloat (samples, track.sampleFormat(), track.channels(), left.data(), right.data());
            return listening.add (left.data(), right.data(), frames);
        });
    if (result.wasStored)
    {
        if (!listening.isCancelled())
            listening.storeSound (result.analysis);
        return result;
    }
    result.seconds = listening.seconds();
    if (!listening.isCancelled() && result.seconds <= 0.0)
    {
        result.fault = faultOfTrack (request.track, decoder);
        return result;
    }
    result.isCancelled = listening.isCancelled();
    if (result.isCancelled)
        return result;
    auto fresh = listening.finish();
    listening.storeSound (fresh);
    result.analysis = AnalysisFile::writeFresh (stored, std::move (fresh), result.isWritten);
    return result;
}

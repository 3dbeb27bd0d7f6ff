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
    Listening (const FileAnalysis::Request& r, Pacing& p, double trackRate)
        : request (r),
          pacing (p),
          rate (trackRate),
          measure (trackRate)
    {
    }

    /** @returns false if nothing more is wanted */
    bool add (const float* left, const float* right, int frames)
    {
        frames = std::min (frames, PXAudioSampleBuffer::maxFrames - total);
        while (frames > 0)
        {
            // In pieces of the pauses' distance, so that one may be due at the end of each.
            const auto piece = std::clamp (distance() - sincePause, 1, frames);
            measure.add (left, right, piece);
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
    TrackAnalysis finish() { return measure.finish (request.tempoRangeIndex); }

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
    TrackMeasure measure;
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
    AdecTrack track (decoder, request.track);
    result.sampleRate = track.sampleRate();
    if (auto old = request.isAgain ? std::nullopt : AnalysisFile::read (stored); old && old->beatMarks)
    {
        result.analysis = std::move (*old);
        result.wasStored = result.isWritten = true;
        return result;
    }
    if (!track.isPlayable())
    {
        result.fault = faultOfTrack (request.track, decoder);
        return result;
    }

    Listening listening (request, pacing, track.sampleRate());
    std::vector<float> left (track.mostFrames()), right (track.mostFrames());
    track.decode (
        [&] (std::span<const std::byte> samples)
        {
            const auto frames =
                convertToFloat (samples, track.sampleFormat(), track.channels(), left.data(), right.data());
            return listening.add (left.data(), right.data(), frames);
        });
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
    result.analysis = AnalysisFile::writeFresh (stored, std::move (fresh), result.isWritten);
    return result;
}

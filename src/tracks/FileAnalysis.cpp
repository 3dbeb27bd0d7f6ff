#include "tracks/FileAnalysis.h"

#include "analysis/files/AnalysisFile.h"
#include "analysis/loudness/Autogain.h"
#include "analysis/track/TrackAnalyser.h"
#include "tracks/AdecTrack.h"
#include "tracks/PXAudioSampleBuffer.h"
#include "tracks/SampleConversion.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace
{
/** Takes what is decoded and feeds tracker and loudness meter.

    Which tracker is right is known when 30 seconds are there or the file has ended; up to then the audio is held. */
class Listening
{
public:
    Listening (const FileAnalysis::Request& r, Pacing& p, double trackRate, bool isStereo)
        : request (r),
          pacing (p),
          rate (trackRate),
          clipFrames (static_cast<size_t> (std::ceil (TrackAnalyser::clipSeconds * rate)))
    {
        if (isStereo)
            loudness.emplace (rate);
        heldLeft.reserve (clipFrames + TrackAnalyser::blockFrames);
        heldRight.reserve (clipFrames + TrackAnalyser::blockFrames);
    }

    /** @returns false if nothing more is wanted */
    bool add (const float* left, const float* right, int frames)
    {
        frames = std::min (frames, PXAudioSampleBuffer::maxFrames - total);
        for (int done = 0; done < frames;)
        {
            // In pieces of the pauses' distance, so that one may be due at the end of each.
            const auto piece = std::min (frames - done, distance() - sincePause);
            take (left + done, right + done, piece);
            done += piece;
            sincePause += piece;
            if (sincePause == distance() && !rest())
                return false;
        }
        return total < PXAudioSampleBuffer::maxFrames;
    }

    bool isCancelled() const { return cancelled; }
    double seconds() const { return total / rate; }

    TrackAnalysis finish()
    {
        if (!analyser)
            decide (true);
        TrackAnalysis found;
        if (cancelled)
            return found;
        analyser->finish (request.tempoRangeIndex, found);
        if (const auto gain = loudness ? loudness->gainDb() : std::nullopt)
            found.autogain = Autogain::factorFor (*gain);
        return found;
    }

private:
    /** Frames from one pause to the next. */
    int distance() const { return pacing.isLive() ? 1024 : TrackAnalyser::blockFrames; }

    void take (const float* left, const float* right, int frames)
    {
        if (loudness)
            loudness->add (left, right, frames);
        if (analyser)
            analyser->add (left, right, frames);
        else
        {
            heldLeft.insert (heldLeft.end(), left, left + frames);
            heldRight.insert (heldRight.end(), right, right + frames);
            if (heldLeft.size() >= clipFrames)
                decide (false);
        }
        total += frames;
    }

    void decide (bool isClip)
    {
        analyser.emplace (rate, isClip);
        const auto frames = static_cast<int> (heldLeft.size());
        for (int done = 0; done < frames && !cancelled; done += distance())
        {
            const auto piece = std::min (distance(), frames - done);
            analyser->add (heldLeft.data() + done, heldRight.data() + done, piece);
            rest();
        }
        heldLeft = {};
        heldRight = {};
    }

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
    const size_t clipFrames;
    std::optional<LoudnessMeter> loudness;
    std::optional<TrackAnalyser> analyser;
    std::vector<float> heldLeft, heldRight;
    int32_t total = 0;
    int sincePause = 0;
    bool cancelled = false;
};

juce::String faultOf (const juce::File& track, const AdecSharedLibrary& decoder)
{
    if (!track.exists())
        return "The file does not exist.";
    if (track.isDirectory())
        return "That is a folder.";
    if (!decoder.isLoaded())
        return "The decoder library is missing.";
    return "The file holds no audio that can be decoded.";
}
}

FileAnalysis::Result FileAnalysis::run (const Request& request, const AdecSharedLibrary& decoder,
                                        Pacing& pacing)
{
    assertMayBlock();
    Result result;
    const auto stored = AnalysisFile::forTrack (request.folder, request.track);
    if (stored == request.track)
    {
        result.fault = faultOf (request.track, decoder);
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
        result.fault =
            track.channels() > 2 ? "The file has more than two channels." : faultOf (request.track, decoder);
        return result;
    }

    Listening listening (request, pacing, track.sampleRate(), track.channels() == 2);
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
        result.fault = faultOf (request.track, decoder);
        return result;
    }
    auto fresh = listening.finish();
    result.isCancelled = listening.isCancelled();
    if (result.isCancelled)
        return result;
    result.analysis = AnalysisFile::writeFresh (stored, std::move (fresh), result.isWritten);
    return result;
}

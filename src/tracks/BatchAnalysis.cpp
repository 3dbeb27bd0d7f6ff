#include "tracks/BatchAnalysis.h"

#include "tracks/FileAnalysis.h"

BatchAnalysis::BatchAnalysis (const juce::File& decoderLibrary, const juce::File& analysisFolder,
                              const EngineSettings& s, ListenerList& l, Pacing& p)
    : decoder (decoderLibrary),
      folder (analysisFolder),
      settings (s),
      listeners (l),
      pacing (p),
      worker ("BatchAnalysis", pacing.isLive() ? Worker::Priority::idle : Worker::Priority::normal)
{
}

/** The files of one call, as long as one of them waits or is at work. */
struct BatchAnalysis::Batch
{
    explicit Batch (Watch w) : watch (std::move (w)) {}

    ~Batch()
    {
        if (watch.ended != nullptr)
            watch.ended();
    }

    Batch (const Batch&) = delete;
    Batch& operator= (const Batch&) = delete;

    bool shouldStop() const { return watch.shouldStop != nullptr && watch.shouldStop(); }

    void tell (const juce::File& file, const juce::String& fault) const
    {
        if (watch.each != nullptr)
            watch.each ({ file.getFullPathName(), fault });
    }

    const Watch watch;
};

void BatchAnalysis::addFiles (const juce::StringArray& paths, bool isAgain, Watch watch)
{
    assertMayBlock();
    const auto batch = std::make_shared<const Batch> (std::move (watch));
    const std::lock_guard guard (lock);
    if (done == total)
        done = total = 0;
    total += paths.size();
    for (const auto& path : paths)
    {
        const auto file = juce::File::getCurrentWorkingDirectory().getChildFile (path);
        const auto end = [this]
        {
            const std::lock_guard ended (lock);
            ++done;
        };
        worker.post ({ [this, file, isAgain, end, batch] (const std::stop_token& stop)
                       {
                           if (!batch->shouldStop())
                               analyse (file, isAgain, *batch, stop);
                           end();
                       },
                       [end, file, batch] (const char* reason)
                       {
                           batch->tell (file, reason);
                           end();
                       } });
    }
}

void BatchAnalysis::stop()
{
    worker.cancel();
    worker.wait();
    const std::lock_guard guard (lock);
    done = total = 0;
}

BatchAnalysis::Progress BatchAnalysis::progress() const
{
    const std::lock_guard guard (lock);
    if (done == total || !worker.isBusy())
        return {};
    return { true, done, total, currentSeconds, currentName };
}

juce::String BatchAnalysis::Progress::text() const
{
    return isRunning ? "Analyzing [" + juce::String (done) + "/" + juce::String (total) + "] : " + name
                     : juce::String();
}

void BatchAnalysis::analyse (const juce::File& file, bool isAgain, const Batch& batch,
                             const std::stop_token& stop)
{
    {
        const std::lock_guard guard (lock);
        currentName = file.getFileName();
    }
    FileAnalysis::Request request;
    request.track = file;
    request.folder = folder;
    request.tempoRangeIndex = settings.tempoRangeIndex;
    request.isAgain = isAgain;
    const auto sounds = SoundSession::ofProcess();
    request.sounds = sounds.get();
    request.mayGoOn = [&] { return !stop.stop_requested() && !batch.shouldStop(); };
    request.progress = [this] (double seconds) { currentSeconds = seconds; };
    const auto result = FileAnalysis::run (request, decoder, pacing);
    currentSeconds = 0.0;
    if (!result.isCancelled)
        batch.tell (file, result.fault);
    const auto& marks = result.analysis.beatMarks;
    if (result.fault.isEmpty() && !result.isCancelled && marks && !marks->empty())
        listeners.postGrid ({ file.getFullPathName(), result.analysis.tempoTracker,
                              confidenceOf (result.analysis).value_or (-1) });
}

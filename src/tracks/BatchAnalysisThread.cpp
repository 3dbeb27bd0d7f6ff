#include "tracks/BatchAnalysisThread.h"

#include "tracks/FileAnalysis.h"

BatchAnalysisThread::BatchAnalysisThread (const juce::File& decoderLibrary, const juce::File& analysisFolder,
                                          const EngineSettings& s, ListenerList& l, Pacing& p)
    : Thread ("BatchAnalysisThread"),
      decoder (decoderLibrary),
      folder (analysisFolder),
      settings (s),
      listeners (l),
      pacing (p)
{
    startThread (pacing.workerPriority());
}

BatchAnalysisThread::~BatchAnalysisThread()
{
    stop(); // while the thread can still answer
    signalThreadShouldExit();
    wake.signal();
    while (isThreadRunning())
        sleep (1);
}

void BatchAnalysisThread::addFiles (const juce::StringArray& paths, bool isAgain)
{
    assertMayBlock();
    if (paths.isEmpty())
        return;
    const std::lock_guard guard (listLock);
    for (const auto& path : paths)
        list.push_back ({ juce::File::getCurrentWorkingDirectory().getChildFile (path), isAgain });
    isRunning = true;
    wake.signal();
}

void BatchAnalysisThread::stop()
{
    assertMayBlock();
    stopping = true;
    {
        const std::lock_guard guard (listLock);
        list.resize (done);
    }
    waitUntilIdle();
    stopping = false;
}

void BatchAnalysisThread::waitUntilIdle() const
{
    assertMayBlock();
    while (progress().isRunning)
        sleep (1);
}

BatchAnalysisThread::Progress BatchAnalysisThread::progress() const
{
    const std::lock_guard guard (listLock);
    return { isRunning, static_cast<int> (done), static_cast<int> (list.size()), currentSeconds,
             currentName };
}

juce::String BatchAnalysisThread::Progress::text() const
{
    return isRunning ? "Analyzing [" + juce::String (done) + "/" + juce::String (total) + "] : " + name
                     : juce::String();
}

bool BatchAnalysisThread::takeNext (Job& job)
{
    const std::lock_guard guard (listLock);
    if (done >= list.size() || threadShouldExit())
    {
        list.clear();
        done = 0;
        currentName.clear();
        isRunning = false;
        return false;
    }
    job = list[done];
    currentName = job.file.getFileName();
    return true;
}

void BatchAnalysisThread::run()
{
    while (!threadShouldExit())
    {
        wake.wait();
        for (Job job; takeNext (job);)
        {
            analyse (job);
            currentSeconds = 0.0;
            const std::lock_guard guard (listLock);
            done = std::min (done + 1, list.size());
        }
    }
}

void BatchAnalysisThread::analyse (const Job& job)
{
    FileAnalysis::Request request;
    request.track = job.file;
    request.folder = folder;
    request.tempoRangeIndex = settings.tempoRangeIndex;
    request.isAgain = job.isAgain;
    request.mayGoOn = [this] { return !stopping; };
    request.progress = [this] (double seconds) { currentSeconds = seconds; };
    const auto result = FileAnalysis::run (request, decoder, pacing);
    const auto& marks = result.analysis.beatMarks;
    if (result.fault.isEmpty() && !result.isCancelled && marks && !marks->empty())
        listeners.postTempo (job.file.getFullPathName(), result.analysis.tempoTracker);
}

#include "deck/AnalysisThread.h"

#include "analysis/track/TrackAnalyser.h"
#include "deck/DeckAnalysis.h"

AnalysisThread::AnalysisThread (DeckWorld& w, DeckPlayer& d) : Thread ("AnalysisThread"), world (w), deck (d)
{
    startThread (world.pacing.workerPriority());
}

AnalysisThread::~AnalysisThread()
{
    stopping = true;
    signalThreadShouldExit();
    wake.signal();
    while (isThreadRunning())
        sleep (1);
}

void AnalysisThread::requestAnalysis (float seedBpm)
{
    assertMayBlock();
    const std::lock_guard guard (requestLock);
    if (holds > 0 || deck.track.loadedFrames < 1)
        return;
    stop();
    seed = seedBpm;
    measuring = true;
    busy = true;
    wake.signal();
}

void AnalysisThread::requestSave()
{
    assertMayBlock();
    saving = true;
    busy = true;
    wake.signal();
}

void AnalysisThread::stop()
{
    assertMayBlock();
    stopping = true;
    while (measuring)
        sleep (1);
    stopping = false;
}

void AnalysisThread::waitUntilIdle() const
{
    assertMayBlock();
    while (busy)
        sleep (1);
}

void AnalysisThread::run()
{
    while (!threadShouldExit())
    {
        wake.wait();
        if (measuring)
        {
            if (!threadShouldExit())
                measure();
            measuring = false;
        }
        if (saving.exchange (false))
            saveAnalysis (world, deck);
        // Who asks sets his own flag first, so that none of both ways round leaves work behind an idle thread.
        busy = false;
        if (measuring || saving)
        {
            busy = true;
            wake.signal();
        }
    }
    busy = measuring = false;
}

void AnalysisThread::measure()
{
    constexpr int blockFrames = 1024;
    const int frames = deck.track.loadedFrames;
    const double rate = deck.track.sampleRate;
    TrackAnalyser analyser (rate, TrackAnalyser::isClip (frames, rate));
    for (int done = 0; done < frames && !stopping; done += blockFrames)
    {
        analyser.add (deck.audioMemory.left() + done, deck.audioMemory.right() + done,
                      std::min (blockFrames, frames - done));
        deck.analysisProgress = done;
        if (world.settings.lowPriorityAnalysis != 0)
            world.pacing.pause();
    }
    const auto tempo = stopping ? 0.0 : analyser.finishNear (static_cast<double> (seed));
    deck.analysisProgress = 0;
    if (stopping)
        return;
    if (tempo > 0.0)
    {
        const CallbackLock lock (world.callbackLock, "tempo of an analysis");
        deck.marks.bpm = deck.marks.bpmAverage = tempo;
    }
    world.listeners.postTempo (deck.texts().filePath, deck.marks.bpm);
}

AnalysisThread::Hold::Hold (AnalysisThread* thread) : held (thread)
{
    if (held == nullptr)
        return;
    const std::lock_guard guard (held->requestLock);
    ++held->holds;
    held->stop();
}

AnalysisThread::Hold::~Hold()
{
    if (held == nullptr)
        return;
    const std::lock_guard guard (held->requestLock);
    --held->holds;
}

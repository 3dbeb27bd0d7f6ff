#include "deck/DeckPlayer.h"

#include "deck/AnalysisThread.h"
#include "deck/DeckWorld.h"
#include "deck/FileImportThread.h"

DeckPlayer::DeckPlayer (DeckWorld& owner, int deckIndex) : world (owner), index (deckIndex)
{
    cues.fill (emptyCue);
    scratchBuffer.clear();
}

DeckPlayer::~DeckPlayer() = default;

void DeckPlayer::resetTrack()
{
    // What was read of the old track is no place in the new one; its sound fades out.
    emptyRings();

    playState = 0;
    cueHold = 0;
    cuePlayArmed = false;
    loadedFrames = 0;
    analysisProgress = 0;
    loadedOk = 0;
    isTrackLoaded = 0;

    position = 0.0;
    elapsedFrames = 0.0;
    linearPosition = 0.0;
    elapsedOutput = 0;
    cues.fill (emptyCue);
    currentCue = 0;
    rate = 0.0;
    nudgeAccel = 0.0;
    startPoint = 0.0;
    startPointOn = 0;
    rollPosition = 0.0;
    sampleRate = 44100.0;
    declickPosition = 0.0;
    declickGain = 0.0;
    peak = 0.0;
    lastLeft = lastRight = 0.0;
    gainRamp = 0.0;

    bpm = world.hostBpm;
    bpmAverage = world.hostBpm;
    bend = 0.0;
    jogValue = 0.0;
    autogain = 1.0;
    reverse = 0;
    nudge = 0;
    scratchOn = scratchEnded = scratchArmed = scratchKeep = jogTouched = 0;

    loopMode = rollingLoop = 0;
    loopStart = loopIn = loopOut = 0.0;
    loopInSet = loopOutSet = 0;
    world.setup (*this).sync = 0;
    resyncRequest = oneShotSync = 0;
    loadNext = 0;

    numBeats = downbeatIndex = downbeatPosition = 0;
    fixedGrid = 0;
    framesSinceBar = framesOfBar = 0;
    edits.forget();
    isAnalysed = 0;
}

void DeckPlayer::makeStretcher (double engineRate)
{
    const auto rate = static_cast<float> (engineRate);
    if (stretcher != nullptr && rate == stretcherRate)
        return;

    CElastiqueProIf* made = nullptr;
    CElastiqueProIf::CreateInstance (made, stretcherBlock, 2, rate, 2);
    std::unique_ptr<CElastiqueProIf> next (made);

    const CallbackLock lock (world.callbackLock, "makeStretcher");
    voice.silence (*this);
    readsAhead = 0;
    stretcher.swap (next);
    stretcherRate = rate;
}

void DeckPlayer::emptyRings() noexcept
{
    voice.restart (*this);
    readsAhead = 0;
}

void DeckPlayer::publishHeard() noexcept
{
    heard = voice.heardPosition (*this);
    readsAhead = voice.isStretching() ? 1 : 0;
}

void DeckPlayer::jumpTo (double frame) noexcept
{
    if (voice.isStretching())
        emptyRings();
    else
        declick();
    setPositionLimited (frame);
}

void DeckPlayer::setPositionLimited (double frame) noexcept
{
    position = juce::jlimit (0.0, static_cast<double> (loadedFrames), frame);
}

BeatGrid DeckPlayer::grid() const noexcept
{
    return { beats.data(),   numBeats,   downbeatIndex, downbeatPosition,
             fixedGrid != 0, sampleRate, bpm,           loadedFrames };
}

DeckPlayer::Texts DeckPlayer::texts() const
{
    const juce::ScopedLock sl (textLock);
    return trackTexts;
}

void DeckPlayer::setTexts (const Texts& next)
{
    const juce::ScopedLock sl (textLock);
    trackTexts = next;
}

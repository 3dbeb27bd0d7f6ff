#include "deck/DeckPlayer.h"

#include "deck/DeckWorld.h"

DeckPlayer::DeckPlayer (DeckWorld& owner, int deckIndex) : world (owner), index (deckIndex)
{
    scratchBuffer.clear();
}

DeckPlayer::~DeckPlayer() = default;

void DeckPlayer::resetTrack()
{
    // The old track was read ahead; its sound fades out.
    emptyRings();

    head = {};
    play = {};
    loops = {};
    jog = {};
    sync = {};
    marks = TrackMarks::atTempo (world.hostBpm);
    track = {};
    tap = {};
    edits.forget();
    publishHeard();

    analysisProgress = 0;
    world.setup (*this).sync = 0;
}

void DeckPlayer::makeStretcher (double engineRate)
{
    const auto rate = static_cast<float> (engineRate);
    if (voice.hasStretcherFor (rate))
        return;

    CElastiqueProIf* made = nullptr;
    CElastiqueProIf::CreateInstance (made, stretcherBlock, 2, rate, 2);
    std::unique_ptr<CElastiqueProIf> stretcher (made);

    const CallbackLock lock (world.callbackLock, "makeStretcher");
    voice.changeStretcher (stretcher, rate);
    publishHeard();
}

void DeckPlayer::emptyRings() noexcept
{
    voice.restart (head);
    publishHeard();
}

void DeckPlayer::jumpTo (double frame) noexcept
{
    if (voice.isStretching())
        voice.restart (head);
    else
        head.declickFrom (head.position);
    placeLimited (frame);
}

void DeckPlayer::place (double frame) noexcept
{
    head.position = frame;
    publishHeard();
}

void DeckPlayer::placeLimited (double frame) noexcept
{
    place (juce::jlimit (0.0, static_cast<double> (track.loadedFrames), frame));
}

BeatGrid DeckPlayer::grid() const noexcept
{
    return { beats.data(),         track.numBeats,   marks.downbeatIndex, marks.downbeatPosition,
             marks.fixedGrid != 0, track.sampleRate, marks.bpm,           track.loadedFrames,
             marks.tableStep,      marks.tableOffset };
}

ReadSource DeckPlayer::readSource() const noexcept
{
    return { audioMemory.left(), audioMemory.right(), track.loadedFrames, grid() };
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

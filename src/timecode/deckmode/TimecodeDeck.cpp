#include "timecode/deckmode/TimecodeDeck.h"

#include "deck/sync/MasterDeck.h"
#include "support/OnePole.h"
#include "timecode/TimecodeDecoder.h"
#include "timecode/deckmode/TimecodeBrand.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace
{
constexpr double playsFrom = 0.1, stopsAfterSeconds = 0.1;
constexpr double faderSeconds = 20000.0 / 44100.0; // in which the fader follows the record
constexpr double leastLeap = 0.002; // seconds of groove, well above the steps of the decoder's ticks
constexpr double takeOverFloor = 1.0e-4;
constexpr double slewSeconds = 0.0003; // rounds the decoder's steps of 0.14 ms
constexpr double backFromZoneSeconds = 0.14;
constexpr double learnSeconds = 1.8; // one turn at 33 1/3
constexpr double leastCalibration = 0.05, mostCalibration = 4.0;
constexpr float loudest = 8.0f; // of an input, full scale 1

/** Input of a card that may send anything. */
float sound (float sample, float gain) noexcept
{
    sample *= gain;
    return std::isfinite (sample) ? std::clamp (sample, -loudest, loudest) : 0.0f;
}
}

/** A decoder with what it was made for. */
struct TimecodeDeck::Seat
{
    TimecodeDecoder decoder;
    int brand = 0;
    double calibration = 1, rate = 0;
    bool isCoded = false, hasLeadIn = false;
    double zoneBegin = 0; ///< seconds of the medium
    double leap = 0; ///< seconds of groove that a dropout hid, known when the carrier was back in this block
};

TimecodeDeck::TimecodeDeck (DeckWorld& w, int deckIndex) : world (w), index (deckIndex) {}

TimecodeDeck::~TimecodeDeck() = default;

//======================================================================================================================
// The hand's side

TimecodeDeck::Mode TimecodeDeck::mode() const noexcept
{
    const auto& setup = world.settings.deckSetup[static_cast<size_t> (index)];
    if (setup.timecodeOn == 0)
        return Mode::internal;
    return setup.timecodeAbsolute != 0 ? Mode::absolute : Mode::relative;
}

void TimecodeDeck::setMode (Mode next)
{
    auto* player = world.deck (index);
    if (player == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "timecode mode");
    if (next == Mode::internal)
        return leaveRecord (*player);
    auto& setup = world.setup (*player);
    setup.timecodeOn = 1;
    setup.timecodeAbsolute = next == Mode::absolute;
    setup.lineThrough = 0; // a control signal is no music
}

void TimecodeDeck::leaveRecord (DeckPlayer& player) noexcept
{
    world.setup (player).timecodeOn = 0;
    controlZone = 0;
    player.tempo.pitch = 0.5;
}

bool TimecodeDeck::isThru() const noexcept
{
    return world.settings.deckSetup[static_cast<size_t> (index)].lineThrough != 0;
}

void TimecodeDeck::setThru (bool on)
{
    auto* player = world.deck (index);
    if (player == nullptr)
        return;
    const CallbackLock lock (world.callbackLock, "thru");
    auto& setup = world.setup (*player);
    setup.lineThrough = on;
    if (!on || (setup.timecodeOn == 0 && controlZone == 0))
        return;
    leaveRecord (*player);
    player->play.on = 0;
    MasterDeck::choose (world, *player);
}

void TimecodeDeck::setBrand (int brand)
{
    const CallbackLock lock (world.callbackLock, "timecode brand");
    auto& setup = world.settings.deckSetup[static_cast<size_t> (index)];
    if (setup.timecodeType == brand)
        return;
    setup.timecodeType = static_cast<int8_t> (brand);
    setup.timecodeCalibration = 1.0;
    controlZone = 0;
}

void TimecodeDeck::learn()
{
    learnAsked = 1;
}

TimecodeDeck::Status TimecodeDeck::status() const noexcept
{
    Status now;
    now.isListening = shown.isListening != 0;
    now.hasSignal = shown.hasSignal != 0;
    now.isPlaceKnown = shown.isPlaceKnown != 0;
    now.isInControlZone = shown.isInControlZone != 0;
    now.isLearning = shown.isLearning != 0 || learnAsked != 0;
    now.speed = shown.speed;
    now.seconds = shown.seconds;
    now.quality = shown.quality;
    now.level = shown.level;
    now.noise = shown.noise;
    now.isExchanged = (shown.wiring & 1) != 0;
    now.isLeftInverted = (shown.wiring & 2) != 0;
    now.isRightInverted = (shown.wiring & 4) != 0;
    return now;
}

void TimecodeDeck::renewDecoder()
{
    const auto& setup = world.settings.deckSetup[static_cast<size_t> (index)];
    auto made = std::make_unique<Seat>();
    made->brand = std::max (0, static_cast<int> (setup.timecodeType));
    made->calibration = setup.timecodeCalibration;
    made->rate = world.engineRate;
    const auto& brand = timecodeBrand (made->brand);
    const auto medium = brand.mediumAt (made->calibration);
    made->isCoded = brand.isCoded();
    made->hasLeadIn = brand.isRecord;
    made->zoneBegin = static_cast<double> (medium.safeLength) / medium.carrierHz;
    made->decoder.prepare (medium, brand.isCoded() ? codeOf (*brand.medium) : nullptr, made->rate);

    // The old one is freed after the lock.
    const CallbackLock lock (world.callbackLock, "timecode decoder");
    std::swap (seat, made);
}

//======================================================================================================================
// The audio thread

bool TimecodeDeck::isSeatCurrent() const noexcept
{
    const auto& setup = world.setup (*deck);
    return seat != nullptr && seat->brand == setup.timecodeType && seat->rate == world.engineRate
           && (seat->isCoded || seat->calibration == setup.timecodeCalibration);
}

void TimecodeDeck::feed() noexcept
{
    deck = world.deck (index);
    const auto& setup = world.setup (*deck);
    frames = std::min (deck->scratchFrames, longestBlock);
    const auto isOn = setup.timecodeOn != 0;
    if (!isOn && controlZone == 0 && watchers == 0 && learnAsked == 0 && learnFrames == 0)
    {
        letGo();
        shown.isListening = 0;
        return;
    }

    tap.write (deck->scratchBuffer.getReadPointer (0), deck->scratchBuffer.getReadPointer (1), frames);
    if (isSeatCurrent())
    {
        decode();
    }
    else
    {
        world.requests.ask (EngineRequest::makeTimecodeDecoder, index);
        place.reset();
        speedNow = 0;
        std::fill_n (speeds.begin(), frames, 0.0f);
    }

    // The zone may have taken the deck's hand off or given it back.
    if (setup.timecodeOn == 0 || deck->isEmpty())
        letGo();
    else
        moveDeck();
    publish();
}

void TimecodeDeck::letGo() noexcept
{
    if (!std::exchange (holds, false))
        return;
    deck->play.followsRecord = 0;
    deck->record = {};
}

void TimecodeDeck::takeHold() noexcept
{
    if (std::exchange (holds, true) && deck->play.followsRecord != 0)
        return;
    deck->play.followsRecord = 1;
    deck->play.cueHold = 0;
    const auto ratio = deck->track.sampleRate / world.engineRate;
    const auto heard = deck->voice.isStretching()
                           ? deck->tempo.factor * (deck->play.reverse != 0 ? -1.0 : 1.0)
                           : deck->head.rate / ratio;
    takeOver = heard - static_cast<double> (speeds[0]);
    stillSeconds = 0;
    servo.reset();
}

float TimecodeDeck::inputGain() const noexcept
{
    return std::pow (10.0f, std::clamp (world.setup (*deck).timecodeGain.get(), -60.0f, 60.0f) / 20.0f);
}

bool TimecodeDeck::isAudible (float left, float right, float threshold, float decay) noexcept
{
    envelope = std::max (envelope - decay, std::max (std::abs (left), std::abs (right)));
    return envelope > threshold;
}

void TimecodeDeck::decode() noexcept
{
    const auto& setup = world.setup (*deck);
    auto& decoder = seat->decoder;
    const auto* left = deck->scratchBuffer.getReadPointer (0);
    const auto* right = deck->scratchBuffer.getReadPointer (1);
    const auto gain = inputGain();
    // A code is read either way up; without one the phase says the direction.
    const auto leftGain = setup.timecodeInvert != 0 ? -gain : gain;
    const auto rightGain = setup.timecodeInvert != 0 && seat->isCoded ? -gain : gain;
    const auto threshold = std::pow (10.0f, -5.0f * setup.timecodeThreshold);
    const auto decay = static_cast<float> (10.0 / seat->rate);
    const auto slew = static_cast<float> (OnePole::coefficient (slewSeconds, seat->rate));

    const auto travelledBefore = decoder.travelled();
    auto way = 0.0;
    for (int i = 0; i < frames; ++i)
    {
        const auto l = sound (left[i], leftGain), r = sound (right[i], rightGain);
        decoder.process (l, r);
        way += decoder.speed();
        // Below the threshold only a signal whose code is read is more than rumble.
        const auto moves = isAudible (l, r, threshold, decay) || decoder.isLocked();
        const auto target = moves ? static_cast<float> (decoder.speed()) : 0.0f;
        speedNow = target + (speedNow - target) * slew;
        if (target == 0.0f && std::abs (speedNow) < 1.0e-4f)
            speedNow = 0.0f;
        speeds[static_cast<size_t> (i)] = speedNow;
    }

    seat->leap = decoder.travelled() - travelledBefore - way / seat->rate;

    place.reset();
    if (const auto seconds = decoder.position())
    {
        followZone (*seconds);
        place = *seconds - (seat->hasLeadIn ? static_cast<double> (setup.timecodeLeadIn) : 0.0);
    }
    if (learnAsked != 0 || learnFrames > 0)
        learnFrom (decoder.travelled());
}

void TimecodeDeck::followZone (double seconds) noexcept
{
    auto& setup = world.setup (*deck);
    if (seconds > seat->zoneBegin)
    {
        zoneFrames = std::min (zoneFrames + frames, 1 << 24);
        if (controlZone != 0 || setup.timecodeOn == 0)
            return;
        controlZone = 1;
        zoneFrames = 0;
        setup.timecodeOn = 0;
        deck->tempo.pitch = std::clamp (static_cast<double> (speedNow) - 0.5, 0.0, 1.0);
    }
    else if (controlZone != 0 && (!seat->hasLeadIn || zoneFrames > backFromZoneSeconds * seat->rate))
    {
        controlZone = 0;
        setup.timecodeAbsolute = 0;
        setup.timecodeOn = 1;
    }
}

void TimecodeDeck::moveDeck() noexcept
{
    takeHold();
    if (takeOver != 0.0)
    {
        for (int i = 0; i < frames; ++i)
        {
            takeOver *= world.smoothing5ms;
            speeds[static_cast<size_t> (i)] += static_cast<float> (takeOver);
        }
        if (std::abs (takeOver) < takeOverFloor)
            takeOver = 0.0;
    }
    servo.observe (speeds.data(), frames, world.engineRate);
    const auto isFree = controlZone == 0 && deck->loops.mode == noLoop;
    if (isFree && place.has_value() && world.setup (*deck).timecodeAbsolute != 0)
        alignToRecord();
    else if (isFree && isSeatCurrent() && std::abs (seat->leap) > leastLeap)
        deck->jumpTo (deck->heardPosition() + seat->leap * deck->track.sampleRate);
    deck->record = { speeds.data(), speeds.data() + frames, speedNow };

    const auto seconds = frames / world.engineRate;
    const auto pace = std::abs (static_cast<double> (speedNow));
    stillSeconds = pace > playsFrom ? 0.0 : stillSeconds + seconds;
    const auto plays = pace > playsFrom || (deck->play.on != 0 && stillSeconds < stopsAfterSeconds);
    if ((deck->play.on != 0) != plays)
    {
        deck->play.on = plays;
        MasterDeck::choose (world, *deck);
    }
    auto& tempo = deck->tempo;
    const auto fader = std::clamp (static_cast<double> (speedNow) - 0.5, -0.5, 1.5);
    tempo.pitch = OnePole::approached (tempo.pitch, fader, std::exp (-seconds / faderSeconds));
    if (plays)
        tempo.factor = std::clamp (std::abs (tempo.pitch + 0.5), 0.25, 4.0);
}

void TimecodeDeck::alignToRecord() noexcept
{
    const auto fileRate = deck->track.sampleRate.get();
    const auto ratio = fileRate / world.engineRate;
    const auto end = static_cast<double> (deck->track.loadedFrames);
    const auto target = place.value_or (0.0) * fileRate;
    if (target < 0.0 || target - ratio * static_cast<double> (frames) < 0.0)
        waitInLeadIn (target / ratio);

    const auto way = ratio * std::accumulate (speeds.begin(), speeds.begin() + frames, 0.0);
    const auto from = deck->heardPosition();
    const auto gap = std::clamp (target, 0.0, end) - std::clamp (from + way, 0.0, end);
    if (std::abs (gap) > RecordServo::farthestPull)
    {
        deck->jumpTo (from + gap);
        deck->sync.resync = 0;
        return;
    }
    if (target <= 0.0 && way == 0.0)
        return deck->placeLimited (0.0); // at rest before the track nothing is heard of the step
    const auto pull = servo.pullFor (gap / fileRate);
    if (pull != 0.0f)
        for (int i = 0; i < frames; ++i)
            speeds[static_cast<size_t> (i)] += pull;
}

void TimecodeDeck::waitInLeadIn (double endTarget) noexcept
{
    // Back from the block's end to where the needle crossed the track's start; before it the deck stands.
    auto left = endTarget;
    auto i = frames - 1;
    while (i >= 0 && left > 0.0)
        left -= static_cast<double> (speeds[static_cast<size_t> (i--)]);
    std::fill (speeds.begin(), speeds.begin() + i + 1, 0.0f);
}

void TimecodeDeck::learnFrom (double travelled) noexcept
{
    if (learnAsked != 0)
    {
        learnAsked = 0;
        learnFrames = static_cast<int> (learnSeconds * seat->rate);
        learnTravelled = travelled;
        learnHeard = 0;
        return;
    }
    learnFrames -= frames;
    if (seat->decoder.hasSignal())
        learnHeard += frames;
    if (learnFrames > 0)
        return;
    auto& setup = world.setup (*deck);
    const auto whole = learnSeconds * seat->rate - learnFrames;
    const auto speed = std::abs (travelled - learnTravelled) / (whole / seat->rate);
    learnFrames = 0;
    if (learnHeard < whole / 2 || seat->isCoded)
        setup.timecodeCalibration = 1.0;
    else if (speed > 0.05)
        setup.timecodeCalibration = std::clamp (seat->calibration / speed, leastCalibration, mostCalibration);
}

void TimecodeDeck::publish() noexcept
{
    const auto isListening = isSeatCurrent();
    shown.isListening = isListening;
    shown.isInControlZone = controlZone.get();
    shown.isLearning = learnFrames > 0;
    shown.hasSignal = isListening && seat->decoder.hasSignal();
    shown.isPlaceKnown = isListening && seat->decoder.isLocked();
    shown.speed = isListening ? seat->decoder.speed() : 0.0;
    if (!isListening)
        return;
    shown.seconds = seat->decoder.position().value_or (0.0);
    shown.quality = seat->decoder.quality();
    shown.level = seat->decoder.level() / inputGain();
    shown.noise = seat->decoder.noise();
    const auto wired = seat->decoder.wiring();
    shown.wiring = static_cast<int8_t> ((wired.exchanged ? 1 : 0) | (wired.leftInverted ? 2 : 0)
                                        | (wired.rightInverted ? 4 : 0));
}

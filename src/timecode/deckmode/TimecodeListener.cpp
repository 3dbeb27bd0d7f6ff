#include "timecode/deckmode/TimecodeListener.h"

#include "timecode/deckmode/MediumRecogniser.h"
#include "timecode/deckmode/TimecodeBrand.h"

#include <cmath>

namespace
{
/** A code that goes unread for this long may be another medium's. */
constexpr double patienceSeconds = 0.3;

/** A carrier that none of the codes fits for this long is foreign. */
constexpr double foreignSeconds = 2.5;

/** A carrier that is away for less than this goes on: the decoder begins anew with each wiring that it tries. */
constexpr double pauseSeconds = 0.2;

InputDiagnosis::Decoded decodedOf (const TimecodeDeck::Status& status, double carrierHz, bool isForeign)
{
    return { .hasSignal = status.hasSignal,
             .isPlaceKnown = status.isPlaceKnown,
             .isForeign = isForeign,
             .isExchanged = status.isExchanged,
             .isLeftInverted = status.isLeftInverted,
             .isRightInverted = status.isRightInverted,
             .noise = status.noise,
             .quality = status.quality,
             .peak = status.level,
             .carrierHz = std::abs (status.speed) * carrierHz };
}
}

struct TimecodeListener::Ear
{
    int64_t read = 0;
    double rate = 0;
    int brand = -1;
    Picture picture;
    InputDiagnosis diagnosis;
    std::unique_ptr<MediumRecogniser> recogniser;
    double unreadSeconds = 0, silentSeconds = 0;
};

TimecodeListener::TimecodeListener (std::array<TimecodeDeck, deckCount>& d, DeckWorld& w)
    : decks (d),
      world (w)
{
    for (auto& ear : ears)
        ear = std::make_unique<Ear>();
}

TimecodeListener::~TimecodeListener() = default;

void TimecodeListener::listen (int deck)
{
    worker.post (deck, { .run = [this, deck] (const std::stop_token&) { hear (deck); } });
}

TimecodeListener::Picture TimecodeListener::picture (int deck) const
{
    const std::scoped_lock lock (picturesLock);
    return pictures[static_cast<size_t> (deck)];
}

void TimecodeListener::hear (int deck)
{
    auto& ear = *ears[static_cast<size_t> (deck)];
    const auto& timecode = decks[static_cast<size_t> (deck)];
    const auto brand =
        std::max (0, static_cast<int> (world.settings.deckSetup[static_cast<size_t> (deck)].timecodeType));
    if (ear.rate != world.engineRate || ear.brand != brand)
    {
        ear.rate = world.engineRate;
        ear.brand = brand;
        ear.picture.foundBrand = -1;
        ear.recogniser.reset();
        ear.unreadSeconds = 0;
        ear.diagnosis.prepare (ear.rate, timecodeBrand (brand).isRecord);
    }
    std::array<InputTap::Frame, 4096> frames;
    while (const auto count = timecode.tap.read (ear.read, frames))
    {
        for (const auto& frame : std::span (frames).first (static_cast<size_t> (count)))
        {
            ear.picture.scope.plot (frame.left, frame.right);
            ear.diagnosis.add (frame.left, frame.right);
        }
        recognise (ear, timecode, std::span (frames).first (static_cast<size_t> (count)));
    }
    const auto& kind = timecodeBrand (brand);
    const auto medium =
        kind.mediumAt (world.settings.deckSetup[static_cast<size_t> (deck)].timecodeCalibration);
    const bool isForeign = kind.isCoded() && ear.picture.foundBrand < 0 && ear.unreadSeconds > foreignSeconds;
    ear.picture.input = ear.diagnosis.report (decodedOf (timecode.status(), medium.carrierHz, isForeign));
    const std::scoped_lock lock (picturesLock);
    pictures[static_cast<size_t> (deck)] = ear.picture;
}

void TimecodeListener::recognise (Ear& ear, const TimecodeDeck& timecode,
                                  std::span<const InputTap::Frame> frames)
{
    const auto status = timecode.status();
    const auto seconds = static_cast<double> (frames.size()) / ear.rate;
    ear.silentSeconds = status.hasSignal ? 0.0 : ear.silentSeconds + seconds;
    if (status.isPlaceKnown || ear.silentSeconds > pauseSeconds)
    {
        ear.unreadSeconds = 0;
        ear.recogniser.reset();
        if (status.isPlaceKnown)
            ear.picture.foundBrand = -1;
        return;
    }
    ear.unreadSeconds += seconds;
    if (ear.picture.foundBrand >= 0 || ear.unreadSeconds < patienceSeconds)
        return;
    if (ear.recogniser == nullptr)
        ear.recogniser = std::make_unique<MediumRecogniser> (ear.rate);
    for (const auto& frame : frames)
        ear.recogniser->process (frame.left, frame.right);
    if (const auto* found = ear.recogniser->found();
        found != nullptr && timecodeBrandOf (*found) != ear.brand)
        ear.picture.foundBrand = timecodeBrandOf (*found);
}

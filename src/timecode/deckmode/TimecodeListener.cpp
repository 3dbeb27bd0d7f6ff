#include "timecode/deckmode/TimecodeListener.h"

#include "timecode/deckmode/MediumRecogniser.h"
#include "timecode/deckmode/TimecodeBrand.h"

namespace
{
/** A code that goes unread for this long may be another medium's. */
constexpr double patienceSeconds = 0.3;
}

struct TimecodeListener::Ear
{
    int64_t read = 0;
    double rate = 0;
    int brand = -1;
    Picture picture;
    InputDiagnosis diagnosis;
    std::unique_ptr<MediumRecogniser> recogniser;
    double unreadSeconds = 0;
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
    ear.picture.input = ear.diagnosis.report();
    const std::scoped_lock lock (picturesLock);
    pictures[static_cast<size_t> (deck)] = ear.picture;
}

void TimecodeListener::recognise (Ear& ear, const TimecodeDeck& timecode,
                                  std::span<const InputTap::Frame> frames)
{
    const auto status = timecode.status();
    if (status.isPlaceKnown || !status.hasSignal)
    {
        ear.unreadSeconds = 0;
        ear.recogniser.reset();
        if (status.isPlaceKnown)
            ear.picture.foundBrand = -1;
        return;
    }
    ear.unreadSeconds += static_cast<double> (frames.size()) / ear.rate;
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

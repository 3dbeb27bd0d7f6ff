#include "timecode/deckmode/MediumRecogniser.h"

namespace
{
constexpr double believeSeconds = 0.1;
constexpr float believeQuality = 0.7f;
}

struct MediumRecogniser::Trial
{
    const ControlMedium* medium = nullptr;
    TimecodeDecoder decoder;
    int framesRead = 0;
};

MediumRecogniser::MediumRecogniser (double sampleRate)
    : framesToBelieve (static_cast<int> (believeSeconds * sampleRate))
{
    for (const auto& medium : controlMedia())
    {
        auto trial = std::make_unique<Trial>();
        trial->medium = &medium;
        trial->decoder.prepare (medium, codeOf (medium), sampleRate);
        trials.push_back (std::move (trial));
    }
}

MediumRecogniser::~MediumRecogniser() = default;

void MediumRecogniser::process (float left, float right) noexcept
{
    for (auto& trial : trials)
    {
        trial->decoder.process (left, right);
        const auto reads = trial->decoder.isLocked() && trial->decoder.quality() > believeQuality;
        trial->framesRead = reads ? trial->framesRead + 1 : 0;
        if (trial->framesRead == framesToBelieve && recognised == nullptr)
            recognised = trial->medium;
    }
}

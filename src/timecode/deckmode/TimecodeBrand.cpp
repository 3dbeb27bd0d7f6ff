#include "timecode/deckmode/TimecodeBrand.h"

#include "support/AudioThread.h"

#include <algorithm>
#include <vector>

namespace
{
/** Carrier of a brand whose carrier was not learnt. */
constexpr double usualCarrierHz = 1000;

constexpr double slowestCarrierHz = 200, fastestCarrierHz = 6000;

const std::vector<TimecodeBrand>& table() noexcept
{
    static const auto brands = []
    {
        std::vector<TimecodeBrand> all {
            { "PX Control CD", &controlMedia()[0], false },
            { "MsPinky Gen.1", nullptr, true },
            { "MsPinky Gen.2", nullptr, true },
            { "MsPinky Gen.3", nullptr, true },
            { "MsPinky Gen.4", nullptr, true },
            { "Torq Vinyl", nullptr, true },
            { "Torq CD", nullptr, false },
            { "Reflex Vinyl", nullptr, true },
            { "Generic Vinyl", nullptr, true },
        };
        for (const auto& medium : controlMedia().subspan (1))
            all.push_back ({ std::string (medium.name), &medium, medium.levelFollowsSpeed });
        return all;
    }();
    return brands;
}
}

ControlMedium TimecodeBrand::mediumAt (double calibration) const noexcept
{
    if (isCoded())
        return *medium;
    auto generic = controlMedia()[1];
    generic.carrierHz =
        std::clamp (usualCarrierHz / std::max (1.0e-3, calibration), slowestCarrierHz, fastestCarrierHz);
    generic.levelFollowsSpeed = isRecord;
    return generic;
}

std::span<const TimecodeBrand> timecodeBrands() noexcept
{
    return table();
}

const TimecodeBrand& timecodeBrand (int index) noexcept
{
    const auto& all = table();
    return all[index >= 0 && index < static_cast<int> (all.size()) ? static_cast<size_t> (index) : 0];
}

int timecodeBrandOf (const ControlMedium& medium) noexcept
{
    const auto& all = table();
    return static_cast<int> (std::ranges::find (all, &medium, &TimecodeBrand::medium) - all.begin());
}

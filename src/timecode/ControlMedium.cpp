#include "timecode/ControlMedium.h"

#include "timecode/ControlDisc.h"
#include "timecode/RegisterCode.h"

#include <algorithm>
#include <array>
#include <mutex>

namespace
{
constexpr std::array media {
    ControlMedium { "cd", "PX Control CD", controlDisc::carrierHz, 0, 0, 0, 1468800, 1433250, true, false,
                    false, false },
    ControlMedium { "serato_2a", "Serato 2nd Ed. (side A)", 1000, 20, 0x59017, 0x361e4, 712000, 707000, false,
                    false, false, true },
    ControlMedium { "serato_2b", "Serato 2nd Ed. (side B)", 1000, 20, 0x8f3c6, 0x4f0d8, 922000, 917000, false,
                    false, false, true },
    ControlMedium { "serato_cd", "Serato CD", 1000, 20, 0xd8b40, 0x34d54, 950000, 940000, false, false, false,
                    false },
    ControlMedium { "traktor_a", "Traktor Scratch (side A)", 2000, 23, 0x134503, 0x041040, 1500000, 1480000,
                    true, true, true, true },
    ControlMedium { "traktor_b", "Traktor Scratch (side B)", 2000, 23, 0x32066c, 0x041040, 2110000, 2090000,
                    true, true, true, true },
    ControlMedium { "mixvibes_v2", "MixVibes V2", 1300, 20, 0x22c90, 0x00008, 950000, 923000, false, false,
                    true, true },
    ControlMedium { "mixvibes_7inch", "MixVibes 7\"", 1300, 20, 0x22c90, 0x00008, 312000, 310000, false,
                    false, true, true },
    ControlMedium { "pioneer_a", "Pioneer (side A)", 1000, 20, 0x78370, 0x7933a, 635000, 614000, false, true,
                    false, true },
    ControlMedium { "pioneer_b", "Pioneer (side B)", 1000, 20, 0xf7012, 0x2ef1c, 918500, 913000, false, true,
                    false, true },
};
} // namespace

std::span<const ControlMedium> controlMedia() noexcept
{
    return media;
}

const ControlMedium* findControlMedium (std::string_view id) noexcept
{
    const auto* found = std::ranges::find (media, id, &ControlMedium::id);
    return found == media.end() ? nullptr : found;
}

std::shared_ptr<const GrooveCode> codeOf (const ControlMedium& medium)
{
    static std::mutex building;
    static std::array<std::shared_ptr<const GrooveCode>, media.size()> codes;

    const std::scoped_lock lock (building);
    auto& code = codes[static_cast<std::size_t> (&medium - media.data())];
    if (code == nullptr && medium.bits == 0)
        code = std::make_shared<ControlDiscCode>();
    else if (code == nullptr)
        code = std::make_shared<RegisterCode> (medium);
    return code;
}

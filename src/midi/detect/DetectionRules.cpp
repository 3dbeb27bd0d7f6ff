#include "midi/detect/DetectionRules.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace
{
constexpr std::array rules {
    DetectionRule { "console mk2", 2, "Hercules DJ Console MK2 controller found" },
    DetectionRule { "xp5", 3, "EKS XP-5 controller found" },
    DetectionRule { "xp10", 3, "EKS XP-10 controller found" },
    DetectionRule { "bcd2000", 4, "Behringer BCD2000 controller found" },
    DetectionRule { "vestax pc-controller", 7, "Vestax VCI-100 controller found" },
    DetectionRule { "bcd3000", 9, "Behringer BCD3000 controller found" },
    DetectionRule { "totaltrack", 10, "Numark Total Control controller found" },
    DetectionRule { "imixreload", 11, "DJ-Tech i-Mix Reload controller found" },
    DetectionRule { "i-mix reload", 11, "DJ-Tech i-Mix Reload controller found" },
    DetectionRule { "i-mix mkii", 29, "DJ-Tech i-Mix MKII controller found" },
    DetectionRule { "usb i-mix", 12, "DJ-Tech i-Mix controller found" },
    DetectionRule { "pcm.1", 14, "Synq PCM-1 controller found" },
    DetectionRule { "scs.1d", 15, "Stanton SCS.1D controller found" },
    DetectionRule { "dj control mp3 e2", 34, "Hercules DJ Control MP3 E2 controller found" },
    DetectionRule { "dj control mp3", 16, "Hercules DJ Control MP3 controller found" },
    DetectionRule { "xponent", 17, "M-Audio Xponent controller found" },
    DetectionRule { "dj console rmx", 18, "Hercules DJ Console RMX controller found" },
    DetectionRule { "otus", 21, "EKS Otus controller found" },
    DetectionRule { "kontrol one", 22, "DJ-Tech Kontrol One controller found" },
    DetectionRule { "mixer one", 22, "DJ-Tech Mixer One controller found" },
    DetectionRule { "scs.3d", 23, "Stanton SCS.3D controller found" },
    DetectionRule { "dj control steel", 24, "Hercules DJ Control Steel controller found" },
    DetectionRule { "mix-free", 25, "DJ-Tech Mix Free controller found" },
    DetectionRule { "vci 300", 26, "Vestax VCI-300 controller found" },
    DetectionRule { "digital jockey", 30, "Reloop Digital Jockey controller found" },
    DetectionRule { "101", 31, "DJ-Tech 101 series controller found" },
    DetectionRule { "dp2", 32, "American Audio Digital Producer 2 controller found" },
    DetectionRule { "djfa", 33, "DJ-Tech DJ For All controller found" },
    DetectionRule { "dmc-1000", 35, "Synq DMC-1000 controller found" },
    DetectionRule { "icon idjx", 48, "iCON iDJX controller found" },
    DetectionRule { "icon idj", 36, "iCON iDJ controller found" },
    DetectionRule { "poket", 37, "DJ-Tech Poket Dj controller found" },
    DetectionRule { "usolo", 38, "DJ-Tech uSolo FX controller found" },
    DetectionRule { "typhoon", 39, "Vestax Typhoon controller found" },
    DetectionRule { "vms4", 40, "American Audio VMS4 controller found" },
    DetectionRule { "dj console mk4", 41, "Hercules DJ Console MK4 controller found" },
    DetectionRule { "dmc-2000", 42, "Synq DMC-2000 controller found" },
    DetectionRule { "vestax vci-100mkii", 43, "Vestax VCI-100 MKII controller found" },
    DetectionRule { "vestax vci-400", 44, "Vestax VCI-400 controller found" },
    DetectionRule { "micro", 45, "Behringer CMD Micro controller found" },
    DetectionRule { "studio 4a", 46, "Behringer CMD Studio 4A controller found" },
    DetectionRule { "cmd pl-1", 47, "Behringer CMD PL-1 controller found" },
    DetectionRule { "cmd mm-1", 47, "Behringer CMD MM-1 controller found" },
    DetectionRule { "cmd dc-1", 47, "Behringer CMD DC-1 controller found" },
    DetectionRule { "cmd dv-1", 47, "Behringer CMD DV-1 controller found" },
    DetectionRule { "cmd lc-1", 47, "Behringer CMD LC-1 controller found" },
    DetectionRule { "casio", 49, "Casio XW-J1 controller found" },
};

char lowered (char c) noexcept
{
    return static_cast<char> (std::tolower (static_cast<unsigned char> (c)));
}
}

std::span<const DetectionRule> detectionRules() noexcept
{
    return rules;
}

bool matches (const DetectionRule& rule, std::string_view portName) noexcept
{
    return !std::ranges::search (portName, rule.substring, {}, lowered, lowered).empty();
}

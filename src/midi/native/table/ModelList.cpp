#include "midi/native/table/ModelList.h"

#include <array>

namespace controllers
{
extern const Model allenHeathXone3d, americanAudioVms4, behringerBcd2000, behringerBcd3000, behringerCmdMicro,
    behringerCmdStudio4a, behringerCmdXx1, djTech101, djTechDjForAll, djTechImixReload, djTechKontrolMixerOne,
    eksOtus, herculesConsoleMk2, herculesConsoleMk4, herculesConsoleRmx, herculesControlMp3,
    herculesControlMp3E2, herculesControlSteel, iconIdj, kontrolDjKdj500, mAudioXSessionPro, mAudioXponent,
    numarkOmniControl, numarkTotalControl, reloopDigitalJockey, stantonScs1d, stantonScs3d, vestaxTyphoon,
    vestaxVci100, vestaxVci100MkII, vestaxVci300, vestaxVci400;
extern const std::span<const NamedControl> djTechImixNames;
}

namespace ModelList
{
namespace
{
using namespace controllers;

/** The pause of the devices that lose messages at full speed. */
constexpr int slow = 10;

constexpr const char* noDevice = "Has no driver of its own: the mapping alone.";
constexpr const char* unknown = "Nobody has given us its numbers: the mapping alone.";
constexpr const char* sisterOnly =
    "Only a sister device's numbers are known, and those are wrong here: the mapping alone.";

constexpr std::array<Entry, count> entries { {
    { "GENERIC CONTROLLER", nullptr, Support::mapping, 0, "Any controller, by the mapping." },
    { "HERCULES CONSOLE MK2", &herculesConsoleMk2, Support::native },
    { "KONTROL DJ KDJ-500", &kontrolDjKdj500, Support::native },
    { "EKS XP10 & XP5", nullptr, Support::mapping, 0, noDevice },
    { "BEHRINGER BCD-2000", &behringerBcd2000, Support::native },
    { "M-AUDIO X-SESSION PRO", &mAudioXSessionPro, Support::native },
    { "A&H XONE:3D", &allenHeathXone3d, Support::native },
    { "VESTAX VCI-100", &vestaxVci100, Support::native },
    { "Wii REMOTE", nullptr, Support::mapping, 0, noDevice },
    { "BEHRINGER BCD-3000", &behringerBcd3000, Support::native },
    { "NUMARK TOTAL CONTROL", &numarkTotalControl, Support::native },
    { "DJ-TECH IMIX RELOAD", &djTechImixReload, Support::native },
    { "DJ-TECH I-MIX", nullptr, Support::namesOnly, 0,
      "Its controls have numbers but no functions: learn them by name." },
    { "VESTAX VCM-100", nullptr, Support::mapping, 0, unknown, "Sends notes and controllers and has lamps." },
    { "SYNQ PCM-1", nullptr, Support::mapping, 0, sisterOnly },
    { "STANTON SCS-1D", &stantonScs1d, Support::native },
    { "HERCULES CONTROL MP3", &herculesControlMp3, Support::native },
    { "M-AUDIO XPONENT", &mAudioXponent, Support::native },
    { "HERCULES CONSOLE RMX", &herculesConsoleRmx, Support::native },
    { "DJ-TECH HID DEVICE", nullptr, Support::mapping, 0, noDevice },
    { "OMNITRONIC MMC-1", nullptr, Support::mapping, 0, sisterOnly },
    { "EKS OTUS", &eksOtus, Support::native },
    { "DJ-TECH KONTROL1 + MIXER1", &djTechKontrolMixerOne, Support::native },
    { "STANTON SCS-3D", &stantonScs3d, Support::native },
    { "HERCULES CONTROL STEEL", &herculesControlSteel, Support::native },
    { "DJ-TECH MIX FREE", nullptr, Support::mapping, slow, unknown,
      "Sends notes and controllers, and loses lamps that come faster than every 10 ms. A "
      "wheel bends by 0.36, and scratches by 2.8." },
    { "VESTAX VCI-300", &vestaxVci300, Support::native },
    { "OPENLABS DBEAT", nullptr, Support::mapping, 0, unknown,
      "Sends notes on channels 11 and 12 and controllers on 12, 13 and 16; it has no lamps. "
      "A wheel bends by 0.005 a step." },
    { "NUMARK OMNICONTROL", &numarkOmniControl, Support::native },
    { "DJ-TECH I-MIX MKII", nullptr, Support::mapping, 0, unknown,
      "Sends notes and controllers and has lamps. A wheel bends by 0.08 a step, and "
      "scratches by 0.005. The names of model 12 are a start for learning." },
    { "RELOOP DIGITAL JOCKEY", &reloopDigitalJockey, Support::native },
    { "DJ-TECH 101 SERIES", &djTech101, Support::native, slow },
    { "AMERICAN AUDIO DP2", nullptr, Support::mapping, 0, sisterOnly },
    { "DJ-TECH DJFORALL", &djTechDjForAll, Support::native, slow },
    { "HERCULES CONTROL MP3 E2", &herculesControlMp3E2, Support::native },
    { "SYNQ DMC-1000", nullptr, Support::mapping, 0, unknown,
      "Sends notes, controllers and faders of 14 bits, and has lamps. Wheels bend by 0.0006 "
      "or 0.016 a step." },
    { "ICON iDJ", &iconIdj, Support::native },
    { "DJ-TECH POKET DJ (DUO)", nullptr, Support::mapping, slow, unknown,
      "Sends notes and controllers, and loses lamps that come faster than every 10 ms. A "
      "wheel bends by 0.01, and scratches by 0.36 or 2.8." },
    { "DJ-TECH uSOLO FX", nullptr, Support::mapping, slow, unknown,
      "Sends notes and controllers, and loses lamps that come faster than every 10 ms. A "
      "wheel bends by 0.005 a step." },
    { "VESTAX TYPHOON", &vestaxTyphoon, Support::native },
    { "AMERICAN AUDIO VMS4", &americanAudioVms4, Support::native },
    { "HERCULES CONSOLE MK4", &herculesConsoleMk4, Support::native },
    { "SYNQ DMC-2000", nullptr, Support::mapping, 0, unknown,
      "Sends notes, controllers and faders of 14 bits, and has lamps. Wheels bend by 0.005 "
      "or 0.006 a step." },
    { "VESTAX VCI-100 MKII", &vestaxVci100MkII, Support::native },
    { "VESTAX VCI-400", &vestaxVci400, Support::native },
    { "BEHRINGER CMD MICRO", &behringerCmdMicro, Support::native },
    { "BEHRINGER CMD STUDIO 4A", &behringerCmdStudio4a, Support::native },
    { "BEHRINGER CMD STUDIO XX-1", &behringerCmdXx1, Support::native },
    { "ICON iDJX", nullptr, Support::mapping, 0, unknown,
      "Sends notes on channels 1 to 4, one for each deck, and controllers; the lamps of its "
      "mapping are all sent anew when it is selected.",
      true },
    { "CASIO XW-J1", nullptr, Support::mapping, 0, unknown,
      "Sends notes and controllers by channel, and has lamps. A wheel bends by 0.01 a step, "
      "and scratches by 0.1." },
} };
}

const Entry& entry (int model) noexcept
{
    return entries[model >= 0 && model < count ? static_cast<size_t> (model) : 0];
}

std::span<const NamedControl> namedControls (int model) noexcept
{
    return entry (model).support == Support::namesOnly ? djTechImixNames : std::span<const NamedControl> {};
}

std::string_view controlName (int model, int status, int data) noexcept
{
    for (const auto& each : namedControls (model))
        if (each.at.matches (status, data))
            return each.name;
    return {};
}
}

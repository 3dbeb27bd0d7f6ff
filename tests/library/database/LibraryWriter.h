#pragma once

#include <string>

/** The units that the program which is killed writes: each is one commit. */
namespace WriterUnits
{
enum class Kind
{
    oneSong,
    manySongs,
    playlist,
    comment
};

inline constexpr int songsOfMany = 20;

constexpr Kind kindOf (int unit)
{
    return static_cast<Kind> (unit % 4);
}

inline std::string pathOf (int unit, int song = 0)
{
    return "/" + std::to_string (unit) + "/" + std::to_string (song);
}

constexpr int entriesOf (int unit)
{
    return 1 + unit % 97;
}
}

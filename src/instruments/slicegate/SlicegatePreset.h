#pragma once

#include "instruments/envelope/Envelope.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <variant>

/** The pads of a deck. */
inline constexpr int padCount = 8;

/** A pad's way with its end, and with a second press. */
enum class PlayMode : int8_t
{
    oneShot,   ///< plays its four beats once; a second press ends it
    reTrigger, ///< plays once; each press begins it anew at the same phase of the beat
    loop       ///< plays until a second press
};

/** One of a pad's two curves, over four beats. */
struct PadCurve
{
    Envelope envelope;
    bool visible = true, enabled = true;
};

/** The contents of a pad, as factory presets and files hold them. A value. */
struct SlicegatePreset
{
    std::string name; ///< UTF-8; empty where a file has none
    PadCurve time;    ///< 1 is the deck's own place, each 1/16 less half a beat further back
    PadCurve volume;

    std::optional<PlayMode> playMode; ///< nothing leaves the pad's as it is
    std::optional<bool> rolling;      ///< "Rolling / March"; nothing leaves the pad's as it is

    /** True where flags and modes stay the pad's own, as with the factory's plain curves. */
    bool keepsFlags = false;
};

/** Reads a file of one pad. Takes any bytes. @returns the preset, or one sentence for the user */
std::variant<SlicegatePreset, std::string> readSlicegatePreset (std::span<const std::byte>);

/** The file of a pad: XML, UTF-8. */
std::string writeSlicegatePreset (const SlicegatePreset&);

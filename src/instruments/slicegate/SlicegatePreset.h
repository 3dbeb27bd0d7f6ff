#pragma once

#include "instruments/preset/PresetXml.h"

#include <optional>
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

/** The contents of a pad, as factory presets and files hold them. A value. */
struct SlicegatePreset
{
    std::string name;      ///< UTF-8; empty where a file has none
    PresetXml::Curve time; ///< 1 is the deck's own place, each 1/16 less half a beat further back
    PresetXml::Curve volume;

    std::optional<PlayMode> playMode; ///< nothing leaves the pad's as it is
    std::optional<bool> rolling;      ///< "Rolling / March"; nothing leaves the pad's as it is

    /** True where flags stay the pad's own, as with the factory's plain curves. */
    bool keepsFlags = false;
};

namespace SlicegateXml
{
inline constexpr const char* root = "sliceGatePreset";

/** Reads the preset whose root has just begun, to its end. @returns a fault, see PresetXml */
std::string read (XmlPullParser&, SlicegatePreset&);

/** Writes it as an element. @param indent   blanks before it */
std::string write (const SlicegatePreset&, int indent = 0);
}

/** Reads the file of a pad. Takes any bytes. @returns the preset, or a fault that says why it is none (see PresetXml) */
std::variant<SlicegatePreset, std::string> readSlicegatePreset (std::string_view bytes);

/** The file of a pad: XML, UTF-8. */
std::string writeSlicegatePreset (const SlicegatePreset&);

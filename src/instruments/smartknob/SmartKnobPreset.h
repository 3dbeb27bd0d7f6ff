#pragma once

#include "instruments/preset/PresetXml.h"
#include "instruments/smartknob/SmartKnobRow.h"

#include <variant>
#include <vector>

/** The content of a knob as its files hold it: a curve for each row, over the knob's way from 0 to 4. */
struct SmartKnobPreset
{
    std::string name;                   ///< UTF-8
    std::vector<PresetXml::Curve> rows; ///< the first so many rows, 20 at most

    /** All twenty rows at rest: a curve from 0 to 1 that neither shows nor drives anything. */
    static SmartKnobPreset empty();
};

namespace SmartKnobXml
{
inline constexpr const char* root = "smartKnobPreset";

/** Reads the preset whose root has just begun, to its end. @returns a fault, see PresetXml */
std::string read (XmlPullParser&, SmartKnobPreset&);

/** Writes it as an element. @param indent   blanks before it */
std::string write (const SmartKnobPreset&, int indent = 0);
}

/** Reads a preset file. Takes any bytes. @returns the preset, or a fault that says why it is none (see PresetXml) */
std::variant<SmartKnobPreset, std::string> readSmartKnobPreset (std::string_view bytes);

/** The bytes of a preset file. */
std::string writeSmartKnobPreset (const SmartKnobPreset&);

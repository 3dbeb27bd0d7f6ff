#pragma once

#include "instruments/smartknob/SmartKnobPreset.h"

#include <string>
#include <vector>

/** The presets of the SmartKnobs as a person writes them; resources/smartknob/presets.txt explains itself. */
namespace KnobText
{
struct Preset
{
    int id = 0;
    std::string name, words; ///< the words say what it does
    SmartKnobPreset content;
};

struct Group
{
    std::string name;
    std::vector<Preset> presets;
};

/** Reads the text. Throws CurveText::Fault with the line's number. */
std::vector<Group> read (const std::string& text);
}

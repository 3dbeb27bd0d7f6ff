#include "instruments/presets/SmartKnobLibrary.h"

#include "instruments/preset/PresetFile.h"
#include "instruments/smartknob/SmartKnobs.h"
#include "support/language/Translate.h"

namespace SmartKnobLibrary
{
const Entry* find (int id)
{
    for (const auto& group : groups())
        for (const auto& entry : group.entries)
            if (entry.id == id)
                return &entry;
    return nullptr;
}

std::string loadFactory (SmartKnobs& knobs, int deck, int knob, int id)
{
    const auto* entry = find (id);
    if (entry == nullptr)
        return tr ("There is no SmartKnob preset %1.", id).toStdString();
    auto read = readSmartKnobPreset (entry->text);
    if (const auto* fault = std::get_if<std::string> (&read))
        return PresetXml::sentence (entry->name, *fault);
    auto& preset = std::get<SmartKnobPreset> (read);
    preset.name = entry->name;
    knobs.loadSmartKnobPreset (deck, knob, preset, rowsOfChannel);
    return {};
}

std::string loadFile (SmartKnobs& knobs, int deck, int knob, const juce::File& file, int rows)
{
    return PresetFile::load (file, &readSmartKnobPreset,
                             [&] (const SmartKnobPreset& preset)
                             { knobs.loadSmartKnobPreset (deck, knob, preset, rows); });
}

std::string saveFile (const SmartKnobs& knobs, int deck, int knob, const juce::File& file)
{
    auto preset = knobs.preset (deck, knob);
    preset.name = file.getFileNameWithoutExtension().toStdString();
    return PresetFile::write (file, writeSmartKnobPreset (preset));
}
}

#pragma once

#include "ui/envelope/PresetFiles.h"

class CPlatterdex;

/** The popup of a SmartKnob: presets, the user's files, and what else can be done with a knob's content. */
class SmartKnobMenu
{
public:
    SmartKnobMenu (CPlatterdex&, int deck, int knob);

    enum Item
    {
        load = 1,
        save,
        clear,
        edit
    };

    /** Adds everything to a menu. Ids of presets are their own; the user's files have those of PresetFiles. */
    void fill (juce::PopupMenu&);

    /** @param opener   for the editor's window */
    void choose (int id, juce::Component& opener);

    static PresetFiles files (CPlatterdex&);

    /** The name of a knob's preset, "Empty" if it has none. */
    static juce::String nameOf (CPlatterdex&, int deck, int knob);

private:
    CPlatterdex& engine;
    const int deck, knob;
    PresetFiles userFiles;
};

#pragma once

#include "ui/envelope/PresetFiles.h"

class CPlatterdex;
class SlicegateDeckState;

/** The popup of a Slicegate pad: presets of all groups, the user's files, its content, its modes. */
class PadMenu
{
public:
    /** @param deck   0 to 3
        @param pad    0 to 7 */
    PadMenu (CPlatterdex&, int deck, int pad);

    enum Item
    {
        load = 1,
        save,
        rename,
        clear,
        edit,
        firstMode = 10, ///< of the three play modes
        rolling = 20
    };

    /** Adds everything to a menu. Ids of presets are their own; the user's files have those of PresetFiles. */
    void fill (juce::PopupMenu&);

    /** @param opener   for the editor's window */
    void choose (int id, juce::Component& opener);

    static PresetFiles files (CPlatterdex&);
    static juce::String nameOf (CPlatterdex&, int deck, int pad);

private:
    SlicegateDeckState& state() const;

    CPlatterdex& engine;
    const int deck, pad;
    PresetFiles userFiles;
};

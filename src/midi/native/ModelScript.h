#pragma once

#include "midi/native/table/ModelTable.h"

#include <juce_core/juce_core.h>

/** A model's table as a script, for those who want to change it: all controls, lamps, layers and texts as rows for
    px_surface.h. What no command says or reads is left out or nearly the same; the script names it in a comment. Any thread that
    may block. */
juce::StringArray modelScriptLines (const Model&);

/** Writes the script of a model. @returns false if the file can't be written */
bool writeModelScript (const Model&, const juce::File&);

/** The way in which a script's row differs from the driver's. */
struct ScriptLack
{
    const char* reason = nullptr; ///< null if it does the same
    bool isLeftOut = false;       ///< false if the script has a row that does nearly the same
};
ScriptLack scriptLackOf (const Model&, const Control&);
ScriptLack scriptLackOf (const Lamp&);

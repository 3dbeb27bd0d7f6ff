#pragma once

#include "offline/set/SetLine.h"
#include "offline/set/SetScript.h"

#include <span>

/** The actions of a set: a word and the reader of what follows it. */
struct SetAction
{
    std::string_view name;

    /** Reads up to the line's end; after a failure what it returns is of no account. */
    SetScript::Action (*read) (SetLine&);

    /** All of them, in the order in which messages name them. */
    static std::span<const SetAction> all() noexcept;
};

// Readers of what happens on a deck and what it is filled with.
SetScript::Action readLoad (SetLine&);
SetScript::Action readReverse (SetLine&);
SetScript::Action readGrid (SetLine&);
SetScript::Action readTimecode (SetLine&);
SetScript::Action readPlugin (SetLine&);
SetScript::Action readSlicegate (SetLine&);
SetScript::Action readSmartknob (SetLine&);

// Readers of what the engine is told or asked.
SetScript::Action readSample (SetLine&);
SetScript::Action readSet (SetLine&);
SetScript::Action readSetting (SetLine&);
SetScript::Action readHost (SetLine&);
SetScript::Action readPrint (SetLine&);

// Readers of what comes from outside: controllers, their scripts, a hand in the browser.
SetScript::Action readMidi (SetLine&);
SetScript::Action readScript (SetLine&);
SetScript::Action readBrowse (SetLine&);

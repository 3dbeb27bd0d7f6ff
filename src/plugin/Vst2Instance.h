#pragma once

#include "plugin/Vst2Record.h"

#include <atomic>

class CPlatterdex;

/** The belongings of one VST 2 effect record while the host holds it.

    The record's own pointers are not ours to use: `object` is the wrapper's, and hosts keep things of theirs in
    `user`. So the records stand in one table of the process, searched by address. */
struct Vst2Instance
{
    CPlatterdex* engine = nullptr;
    Vst2::AEffectDispatcherProc wrapped = nullptr; ///< the dispatcher that takes what is not about parameters
    Vst2::audioMasterCallback host = nullptr;

    /** Remembers an instance under its record. Any thread.
        @returns false if the table is full: 16 engines would hold 8 GB of track memory. */
    static bool add (const Vst2::AEffect*, const Vst2Instance&) noexcept;

    /** Null for a record that is not in the table. Wait-free: hosts write parameters on their audio thread too. */
    static const Vst2Instance* find (const Vst2::AEffect*) noexcept;

    static void remove (const Vst2::AEffect*) noexcept;
};

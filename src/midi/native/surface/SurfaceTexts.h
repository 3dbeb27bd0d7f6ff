#pragma once

#include "midi/native/surface/SurfaceState.h"

#include <string>
#include <vector>

class MidiControl;

/** Keeps the displays of a surface up to date: a text is sent when it has changed. OutMidiThread. */
class SurfaceTexts
{
public:
    void state (MidiControl&, const Model&, const SurfaceState&);

    /** Has all texts sent again. */
    void forget() { sent.clear(); }

private:
    std::vector<std::string> sent; ///< by field
};

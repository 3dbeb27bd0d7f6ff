#pragma once

#include <array>

/** One control as a row of its view's table: what it does, where it stands and what it looks like. */
struct ControlRow
{
    enum class Kind
    {
        text,  ///< a button with a word on it
        sign,  ///< a button whose picture says it
        knob,  ///< 28 or 40 wide
        fader, ///< upright
        level, ///< a fader that lies
    };

    /** What a lit button's colour means. */
    enum class Lit
    {
        plain, ///< it is on
        deck,  ///< the deck does it
        selected,
        danger,
        never ///< it has no state to show
    };

    Kind kind;
    const char* name;    ///< of the component, "_playButton"
    const char* command; ///< its constant; the deck's letter follows one that ends in an underscore
    const char* face;    ///< word on the button, picture of the sign, word below the knob, track of the fader
    std::array<int, 4> area;  ///< left, top, width, height, from the place of its group
    const char* tooltip = ""; ///< the command's own name if there is none
    Lit lit = Lit::plain;     ///< of a button
    const char* right = "";   ///< the command that the right mouse button carries out on a button
    bool centred = false;     ///< a knob's arc grows from its middle
};

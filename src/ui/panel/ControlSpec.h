#pragma once

#include <array>

/** A control apart from where it stands: its command, its looks and its words. */
struct ControlSpec
{
    enum class Kind
    {
        text,  ///< a button with a word on it
        sign,  ///< a button whose picture says it
        knob,  ///< 28 or 40 wide
        fader, ///< upright
        level, ///< a fader that lies
    };

    /** The meaning of a lit button's colour. */
    enum class Lit
    {
        plain,  ///< it is on, as it usually is
        notice, ///< it is on, and should be noticed
        absent, ///< likewise, while its command is off
        deck,   ///< the deck does it
        selected,
        danger,
        never ///< it has no state to show
    };

    /** The unit in which a knob's or fader's value is typed. */
    enum class Words
    {
        share, ///< percent of the range
        decibels,
        semitones,
        pitch ///< percent of the speed, or BPM
    };

    Kind kind;
    const char* name;    ///< of the component, "_playButton"
    const char* command; ///< its constant; the deck's letter follows one that ends in an underscore
    const char* face;    ///< word on the button, picture of the sign, word below the knob, track of the fader
    const char* tooltip = ""; ///< the command's own name if there is none
    Lit lit = Lit::plain;     ///< of a button
    const char* right = "";   ///< the command that the right mouse button carries out on a button
    bool centred = false;     ///< a knob's arc grows from its middle
    Words words = Words::share;

    /** The same control with another word or picture. */
    constexpr ControlSpec withFace (const char* other) const
    {
        auto same = *this;
        same.face = other;
        return same;
    }
};

/** A control in its place. */
struct PlacedControl
{
    ControlSpec control;
    std::array<int, 4> area; ///< left, top, width, height, from the place of its group
};

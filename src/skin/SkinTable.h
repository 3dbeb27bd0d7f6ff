#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

/** The pictures of the skin: names, sizes, frames and what they are made of. The program that draws them and the
    program that shows them both read this table, so neither can be wrong about a size. */
namespace skin
{
/** The material of a picture, which decides who draws it. */
enum class Material : std::uint8_t
{
    knob,        ///< the arc grows from the minimum
    centredKnob, ///< the arc grows from the middle, whose frame is the one in the middle
    uprightTrack,
    uprightScale, ///< a track with its ticks, the middle one strong
    uprightCap,
    levelTrack,
    levelScale,
    levelCap,
    button,     ///< no sign: text goes on it, three-sliced to any width
    signButton, ///< a button with its sign
    sign,       ///< the sign alone: at rest, under the hand, on a filled ground
    tickBox,
    levelMeter,
    uprightMeter,
    area,   ///< a ground with its two edges, to be drawn to any size from nine pieces
    sunken, ///< a well, likewise
    deckStrip,
    deckColumn,
    headerTile,
    ghostTile,
    tab,
    barMark,
    beatMark,
    beatLine,
    cueFlag,
    cueLine,
    deckFlag,
    deckLine,
    loopIn,
    loopOut,
    loopLine,
    playhead,
    windowButton,
    corner,
    scrollUpright,
    scrollLevel,
    logo
};

/** The sign that a hand looks for on a button. */
enum class Sign : std::uint8_t
{
    none,
    playPause,
    cue,
    sync,
    padlock,
    headphones,
    record,
    snap,
    decks,
    waves,
    gear,
    fullScreen,
    power,
    minus,
    plus,
    left,
    right,
    up,
    down,
    load,
    eject,
    loop,
    search,
    close,
    minimise,
    maximise,
    menu
};

/** The colour of what is lit. */
enum class Hue : std::uint8_t
{
    neutral,
    accent,
    deckA,
    deckB,
    deckC,
    deckD,
    lime,
    red
};

constexpr std::size_t hueCount = 8;

/** The addition to a picture's name for its hue; the first hue of a family adds nothing. */
constexpr std::array<std::string_view, hueCount> hueSuffixes { "_neutral", "_accent", "_a",    "_b",
                                                               "_c",       "_d",      "_lime", "_red" };

/** The frames of a button, in the order of PXImageButton::setImages. Caps and window buttons have the first three. */
enum ButtonFrame : int
{
    normalOff,
    overOff,
    downOff,
    normalOn,
    overOn,
    downOn,
    buttonFrames
};

/** The scales for which there is a set of pictures: 100 to 200 percent, each that the preferences offer. */
constexpr std::array<float, 5> scales { 1.0f, 1.25f, 1.5f, 1.75f, 2.0f };

/** The angle of a knob's ends from its top, in radians, clockwise. */
constexpr float knobSweep = 2.3562f;

/** Pictures that differ only in hue. */
struct Family
{
    std::string_view name;
    int width, height, frames; ///< of one frame, in logical pixels; frames lie one below the other
    Material material;
    unsigned hues = 1; ///< a bit for each Hue
    Sign sign = Sign::none;
};

/** The bit of a hue in Family::hues. */
constexpr unsigned bit (Hue hue)
{
    return 1u << static_cast<unsigned> (hue);
}

constexpr unsigned deckHues = bit (Hue::deckA) | bit (Hue::deckB) | bit (Hue::deckC) | bit (Hue::deckD);
constexpr unsigned plainKnobHues = bit (Hue::neutral) | bit (Hue::accent);
constexpr unsigned knobHues = plainKnobHues | deckHues;
constexpr unsigned litHues =
    bit (Hue::neutral) | bit (Hue::accent) | deckHues | bit (Hue::lime) | bit (Hue::red);
constexpr unsigned quiet = bit (Hue::neutral), onlyAccent = bit (Hue::accent), onlyRed = bit (Hue::red),
                   onlyLime = bit (Hue::lime);
constexpr unsigned meterHues = bit (Hue::neutral) | deckHues;

constexpr int smallKnobFrames = 65, knobFrames = 97; ///< odd, so that there is a middle one

constexpr Family families[] {
    // Knobs. The accent's are for the time that a value is being changed.
    { "knob_28", 28, 28, smallKnobFrames, Material::knob, plainKnobHues },
    { "knob_40", 40, 40, knobFrames, Material::knob, knobHues },
    { "knob_28_centred", 28, 28, smallKnobFrames, Material::centredKnob, plainKnobHues },
    { "knob_40_centred", 40, 40, knobFrames, Material::centredKnob, plainKnobHues },

    // Faders: a track to any length in three pieces, or one with its ticks at a fixed length. A cap's middle travels
    // from 14 pixels inside one end to 14 inside the other, and the ticks stand where its line can.
    { "fader_track", 20, 64, 1, Material::uprightTrack },
    { "fader_128", 20, 128, 1, Material::uprightScale },
    { "pitch_164", 28, 164, 1, Material::uprightScale },
    { "fader_cap", 12, 28, 3, Material::uprightCap },
    { "crossfader_track", 64, 20, 1, Material::levelTrack },
    { "crossfader_96", 96, 20, 1, Material::levelScale },
    { "crossfader_188", 188, 20, 1, Material::levelScale },
    { "crossfader_cap", 28, 12, 3, Material::levelCap },

    // Buttons for text: 8 pixels, a tile of 48, 8 pixels.
    { "button_20", 64, 20, buttonFrames, Material::button, litHues },
    { "button_24", 64, 24, buttonFrames, Material::button, litHues },
    { "button_32", 64, 32, buttonFrames, Material::button, litHues },

    // The pads of the Slicegate, which carry a picture of their own curves.
    { "pad_52", 52, 47, buttonFrames, Material::button, deckHues },

    // Buttons with a sign.
    { "play_40", 40, 32, buttonFrames, Material::signButton, deckHues, Sign::playPause },
    { "cue_40", 40, 32, buttonFrames, Material::signButton, deckHues, Sign::cue },
    { "sync_40", 40, 24, buttonFrames, Material::signButton, quiet, Sign::sync },
    { "lock_24", 24, 24, buttonFrames, Material::signButton, onlyAccent, Sign::padlock },
    { "pfl_24", 24, 24, buttonFrames, Material::signButton, onlyAccent, Sign::headphones },
    { "pfl_40", 40, 24, buttonFrames, Material::signButton, onlyAccent, Sign::headphones },
    { "rec_32", 32, 32, buttonFrames, Material::signButton, onlyRed, Sign::record },
    { "snap_32", 32, 32, buttonFrames, Material::signButton, quiet, Sign::snap },
    { "decks_32", 32, 32, buttonFrames, Material::signButton, quiet, Sign::decks },
    { "waves_32", 32, 32, buttonFrames, Material::signButton, quiet, Sign::waves },
    { "preferences_32", 32, 32, buttonFrames, Material::signButton, quiet, Sign::gear },
    { "fullscreen_32", 32, 32, buttonFrames, Material::signButton, quiet, Sign::fullScreen },
    { "power_24", 24, 24, buttonFrames, Material::signButton, onlyLime, Sign::power },
    { "minus_18", 18, 24, buttonFrames, Material::signButton, quiet, Sign::minus },
    { "plus_18", 18, 24, buttonFrames, Material::signButton, quiet, Sign::plus },
    { "load_18", 18, 24, buttonFrames, Material::signButton, quiet, Sign::load },
    { "left_20", 20, 20, buttonFrames, Material::signButton, quiet, Sign::left },
    { "left_24", 24, 24, buttonFrames, Material::signButton, quiet, Sign::left },
    { "right_20", 20, 20, buttonFrames, Material::signButton, quiet, Sign::right },
    { "right_24", 24, 24, buttonFrames, Material::signButton, quiet, Sign::right },
    { "load_24", 24, 24, buttonFrames, Material::signButton, onlyAccent, Sign::load },
    { "eject_24", 24, 24, buttonFrames, Material::signButton, onlyAccent, Sign::eject },
    { "loop_24", 24, 24, buttonFrames, Material::signButton, onlyAccent, Sign::loop },
    { "menu_20", 20, 20, buttonFrames, Material::signButton, onlyAccent, Sign::menu },
    { "tickbox", 20, 20, buttonFrames, Material::tickBox, onlyAccent },

    // Signs alone.
    { "sign_headphones", 16, 16, 3, Material::sign, 1, Sign::headphones },
    { "sign_padlock", 16, 16, 3, Material::sign, 1, Sign::padlock },
    { "sign_search", 16, 16, 3, Material::sign, 1, Sign::search },
    { "sign_loop", 16, 16, 3, Material::sign, 1, Sign::loop },
    { "sign_left", 12, 12, 3, Material::sign, 1, Sign::left },
    { "sign_right", 12, 12, 3, Material::sign, 1, Sign::right },
    { "sign_up", 12, 12, 3, Material::sign, 1, Sign::up },
    { "sign_down", 12, 12, 3, Material::sign, 1, Sign::down },

    // Level meters, two bars of 7 at 0 and 9: unlit, then lit.
    { "meter_level", 86, 16, 2, Material::levelMeter, meterHues },
    { "meter_upright", 16, 86, 2, Material::uprightMeter },

    // Grounds, in pieces of 8.
    { "panel", 48, 48, 1, Material::area },
    { "well", 48, 48, 1, Material::sunken },
    { "deck_strip", 150, 239, 1, Material::deckStrip },
    { "deck_column", 49, 190, 1, Material::deckColumn },
    { "header_left", 159, 48, 1, Material::headerTile },
    { "header_tile", 48, 48, 1, Material::headerTile },
    { "header_right", 241, 48, 1, Material::headerTile },
    { "ghost_mixer", 48, 43, 1, Material::ghostTile },
    { "tab", 64, 24, buttonFrames, Material::tab, onlyAccent },

    // Marks on a waveform. The lines of cues and loops have a dark flank on either side.
    { "mark_32", 7, 7, 2, Material::barMark }, ///< the second is the anchor's
    { "mark_8", 5, 5, 1, Material::beatMark },
    { "line_32", 1, 130, 2, Material::beatLine },
    { "line_8", 1, 132, 1, Material::beatLine },
    { "line_2", 1, 137, 1, Material::beatLine },
    { "hot_cue", 7, 11, 8, Material::cueFlag },
    { "hot_cue_line", 3, 104, 8, Material::cueLine },
    { "cue_point", 7, 11, 1, Material::deckFlag, deckHues },
    { "cue_point_line", 3, 104, 1, Material::deckLine, deckHues },
    { "loop_in", 7, 11, 2, Material::loopIn }, ///< the second is the active loop's
    { "loop_out", 7, 11, 2, Material::loopOut },
    { "loop_line", 3, 104, 2, Material::loopLine },
    { "playhead", 4, 140, 1, Material::playhead, deckHues },

    // Windows.
    { "sm_close", 24, 24, 3, Material::windowButton, onlyRed, Sign::close },
    { "sm_minimise", 24, 24, 3, Material::windowButton, 1, Sign::minimise },
    { "sm_maximise", 24, 24, 3, Material::windowButton, 1, Sign::maximise },
    { "resizer", 16, 16, 3, Material::corner },
    { "scroll_upright", 12, 32, 3, Material::scrollUpright },
    { "scroll_level", 32, 12, 3, Material::scrollLevel },
    { "logo", 148, 32, 1, Material::logo },
};

/** One picture strip. */
struct Row
{
    std::array<char, 28> text {};
    std::size_t length = 0;
    int width = 0, height = 0, frames = 0; ///< of one frame, in logical pixels
    Material material {};
    Hue hue {};
    Sign sign {};

    constexpr std::string_view name() const noexcept { return { text.data(), length }; }
};

constexpr std::size_t countRows()
{
    std::size_t count = 0;
    for (const auto& family : families)
        for (unsigned hue = 0; hue < hueCount; ++hue)
            count += family.hues >> hue & 1u;
    return count;
}

/** Every strip. A family's name is that of its neutral or accent member, or of its only one; the others add their
    hue's suffix, "_a" to "_d" for the decks. */
constexpr auto table = []
{
    std::array<Row, countRows()> rows {};
    std::size_t next = 0;
    for (const auto& family : families)
    {
        const bool decksOnly = family.hues == deckHues;
        bool first = true;
        for (unsigned hue = 0; hue < hueCount; ++hue)
        {
            if ((family.hues >> hue & 1u) == 0)
                continue;
            auto& row = rows[next++];
            for (const char c : family.name)
                row.text[row.length++] = c;
            if (!first || decksOnly)
                for (const char c : hueSuffixes[hue])
                    row.text[row.length++] = c;
            first = false;
            row.width = family.width;
            row.height = family.height;
            row.frames = family.frames;
            row.material = family.material;
            row.hue = static_cast<Hue> (hue);
            row.sign = family.sign;
        }
    }
    return rows;
}();

/** A length in logical pixels at a scale, in pixels of the picture. */
constexpr int scaled (int logical, float scale)
{
    return static_cast<int> (static_cast<float> (logical) * scale + 0.5f);
}
}

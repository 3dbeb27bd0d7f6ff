#include "ui/global/MixerChannel.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"
#include "ui/panel/PanelPaint.h"

namespace
{
using Kind = ControlRow::Kind;
using Lit = ControlRow::Lit;

constexpr const char* pfl = "Pre-fader listening: this channel on the headphones";
constexpr const char* left = "On the left side of the crossfader";
constexpr const char* right = "On the right side of the crossfader";

// clang-format off
constexpr ControlRow tallTable[] {
    { Kind::knob,  "_gainSlider",      "GAIN_",                  "GAIN", {  7,  28, 40, 52 }, "Gain", Lit::plain, "", true },
    { Kind::knob,  "_eqHighSlider",    "EQ_HIGH_",               "",     {  2,  88, 28, 28 }, "High band of the equaliser", Lit::plain, "", true },
    { Kind::text,  "_killHighButton",  "EQ_HIGH_KILL_",          "H",    { 30,  90, 22, 24 }, "Kills the high band", Lit::danger },
    { Kind::knob,  "_eqMidSlider",     "EQ_MID_",                "",     {  2, 120, 28, 28 }, "Mid band of the equaliser", Lit::plain, "", true },
    { Kind::text,  "_killMidButton",   "EQ_MID_KILL_",           "M",    { 30, 122, 22, 24 }, "Kills the mid band", Lit::danger },
    { Kind::knob,  "_eqLowSlider",     "EQ_LOW_",                "",     {  2, 152, 28, 28 }, "Low band of the equaliser", Lit::plain, "", true },
    { Kind::text,  "_killLowButton",   "EQ_LOW_KILL_",           "L",    { 30, 154, 22, 24 }, "Kills the low band", Lit::danger },
    { Kind::knob,  "_filterSlider",    "FILTER_",                "FILTER", { 7, 188, 40, 52 }, "Filter: low-pass to the left, high-pass to the right", Lit::plain, "", true },
    { Kind::sign,  "_pflButton",       "PFL_",                   "pfl_40", { 7, 248, 40, 24 }, pfl },
    { Kind::fader, "_volumeSlider",    "VOLUME_",                "fader_128", { 5, 280, 22, 128 }, "Volume" },
    { Kind::text,  "_assignLeftButton",  "CROSSFADER_ASSIGN_LEFT_",  "L", {  4, 416, 22, 24 }, left, Lit::deck },
    { Kind::text,  "_assignRightButton", "CROSSFADER_ASSIGN_RIGHT_", "R", { 28, 416, 22, 24 }, right, Lit::deck },
};

constexpr ControlRow wideTable[] {
    { Kind::knob,  "_gainSlider",      "GAIN_",                  "GAIN", { 32,   4, 28, 40 }, "Gain", Lit::plain, "", true },
    { Kind::knob,  "_eqHighSlider",    "EQ_HIGH_",               "",     {  4,  52, 28, 28 }, "High band of the equaliser", Lit::plain, "", true },
    { Kind::text,  "_killHighButton",  "EQ_HIGH_KILL_",          "H",    { 36,  54, 24, 24 }, "Kills the high band", Lit::danger },
    { Kind::knob,  "_eqMidSlider",     "EQ_MID_",                "",     {  4,  84, 28, 28 }, "Mid band of the equaliser", Lit::plain, "", true },
    { Kind::text,  "_killMidButton",   "EQ_MID_KILL_",           "M",    { 36,  86, 24, 24 }, "Kills the mid band", Lit::danger },
    { Kind::knob,  "_eqLowSlider",     "EQ_LOW_",                "",     {  4, 116, 28, 28 }, "Low band of the equaliser", Lit::plain, "", true },
    { Kind::text,  "_killLowButton",   "EQ_LOW_KILL_",           "L",    { 36, 118, 24, 24 }, "Kills the low band", Lit::danger },
    { Kind::knob,  "_filterSlider",    "FILTER_",                "FILTER", { 12, 152, 40, 52 }, "Filter: low-pass to the left, high-pass to the right", Lit::plain, "", true },
    { Kind::sign,  "_pflButton",       "PFL_",                   "pfl_40", { 64,   8, 40, 24 }, pfl },
    { Kind::fader, "_volumeSlider",    "VOLUME_",                "fader_128", { 63, 40, 22, 128 }, "Volume" },
    { Kind::text,  "_assignLeftButton",  "CROSSFADER_ASSIGN_LEFT_",  "L", { 62, 176, 22, 24 }, left, Lit::deck },
    { Kind::text,  "_assignRightButton", "CROSSFADER_ASSIGN_RIGHT_", "R", { 84, 176, 22, 24 }, right, Lit::deck },
};
// clang-format on

constexpr std::array<int, 4> tallMeter { 32, 301, 16, 86 }, wideMeter { 88, 61, 16, 86 };
constexpr std::array<int, 4> tallBadge { 17, 4, 20, 20 }, wideBadge { 4, 8, 20, 20 };

juce::Rectangle<int> rectangle (const std::array<int, 4>& a)
{
    return { a[0], a[1], a[2], a[3] };
}
}

MixerChannel::MixerChannel (CPlatterdex& e, int deck, Shape s)
    : ControlPanel (e, Pace::moving),
      deckIndex (deck),
      shape (s),
      meter (own (std::make_unique<PXImageVerticalLevelMeter>()))
{
    const auto isTall = shape == Shape::tall;
    if (isTall)
        addControls (tallTable, deck);
    else
        addControls (wideTable, deck);
    meter.setImages (skin::deckName ("meter_upright", deck));
    const auto level = CommandTable::numberOf ("LEVEL_", deck);
    meter.bind (e, level, level);
    meter.setBounds (rectangle (isTall ? tallMeter : wideMeter));
}

void MixerChannel::pollMoving()
{
    pollControls();
    const auto now = engine.decks.deck (deckIndex)->play.on != 0;
    if (now == playing)
        return;
    playing = now;
    repaint (rectangle (shape == Shape::tall ? tallBadge : wideBadge));
}

void MixerChannel::paint (juce::Graphics& g)
{
    ControlPanel::paint (g);
    PanelPaint::badge (g, rectangle (shape == Shape::tall ? tallBadge : wideBadge), deckIndex, playing);
}

#include "ui/global/MixerChannel.h"

#include "ui/global/PeakMeter.h"
#include "ui/panel/MixerControls.h"

namespace
{
using namespace MixerControls;

// clang-format off
constexpr PlacedControl tallTable[] {
    { gain,        {  7,  28, 40,  52 } },
    { high,        {  2,  88, 28,  28 } },
    { killHigh,    { 30,  90, 22,  24 } },
    { mid,         {  2, 120, 28,  28 } },
    { killMid,     { 30, 122, 22,  24 } },
    { low,         {  2, 152, 28,  28 } },
    { killLow,     { 30, 154, 22,  24 } },
    { filter,      {  7, 188, 40,  52 } },
    { pfl,         {  7, 248, 40,  24 } },
    { volume,      {  5, 280, 22, 128 } },
    { assignLeft,  {  4, 416, 22,  24 } },
    { assignRight, { 28, 416, 22,  24 } },
};

constexpr PlacedControl wideTable[] {
    { gain,        { 32,   4, 28,  40 } },
    { high,        {  4,  52, 28,  28 } },
    { killHigh,    { 36,  54, 24,  24 } },
    { mid,         {  4,  84, 28,  28 } },
    { killMid,     { 36,  86, 24,  24 } },
    { low,         {  4, 116, 28,  28 } },
    { killLow,     { 36, 118, 24,  24 } },
    { filter,      { 12, 152, 40,  52 } },
    { pfl,         { 64,   8, 40,  24 } },
    { volume,      { 63,  40, 22, 128 } },
    { assignLeft,  { 62, 176, 22,  24 } },
    { assignRight, { 84, 176, 22,  24 } },
};
// clang-format on

// The bars stand beside the scale of the fader: both begin and end at the same heights.
constexpr int scaleInset = 14, meterHead = PeakMeter::lampHeight + PeakMeter::lampGap;
constexpr std::array<int, 4> tallMeter { 32, 280 + scaleInset - meterHead, PeakMeter::thickness,
                                         100 + meterHead },
    wideMeter { 88, 40 + scaleInset - meterHead, PeakMeter::thickness, 100 + meterHead };
constexpr juce::Point<int> tallBadge { 17, 4 }, wideBadge { 4, 8 };

juce::Rectangle<int> rectangle (const std::array<int, 4>& a)
{
    return { a[0], a[1], a[2], a[3] };
}
}

MixerChannel::MixerChannel (CPlatterdex& e, int deck, Shape shape) : ControlPanel (e), badge (e, deck)
{
    const auto isTall = shape == Shape::tall;
    if (isTall)
        addControls (tallTable, deck);
    else
        addControls (wideTable, deck);
    own (std::make_unique<PeakMeter> (e, deck)).setBounds (rectangle (isTall ? tallMeter : wideMeter));
    badge.setTopLeftPosition (isTall ? tallBadge : wideBadge);
    addAndMakeVisible (badge);
}

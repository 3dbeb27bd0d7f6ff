#include "ui/global/GhostMixerComponent.h"

#include "engine/CPlatterdex.h"
#include "skin/Skin.h"
#include "ui/layout/EditorLayout.h"
#include "ui/panel/PanelPaint.h"

namespace
{
using Kind = ControlRow::Kind;
using Lit = ControlRow::Lit;

constexpr int gap = 4, badgeSize = 20, knobWidth = 28, knobHeight = 40;
constexpr int pflWidth = 24, buttonHeight = 24, leastFader = 50, knobGap = 2, mostFader = 160;

// clang-format off
constexpr ControlRow knobTable[] {
    { Kind::knob, "_eqHighSlider", "EQ_HIGH_", "HI",     { 0, 0, knobWidth, knobHeight }, "High band of the equaliser", Lit::plain, "", true },
    { Kind::knob, "_eqMidSlider",  "EQ_MID_",  "MID",    { 0, 0, knobWidth, knobHeight }, "Mid band of the equaliser", Lit::plain, "", true },
    { Kind::knob, "_eqLowSlider",  "EQ_LOW_",  "LOW",    { 0, 0, knobWidth, knobHeight }, "Low band of the equaliser", Lit::plain, "", true },
    { Kind::knob, "_filterSlider", "FILTER_",  "FILT",   { 0, 0, knobWidth, knobHeight }, "Filter: low-pass to the left, high-pass to the right", Lit::plain, "", true },
    { Kind::knob, "_gainSlider",   "GAIN_",    "GAIN",   { 0, 0, knobWidth, knobHeight }, "Gain", Lit::plain, "", true },
};
constexpr ControlRow faderRow { Kind::level, "_volumeSlider", "VOLUME_", "crossfader_track", { 0, 0, leastFader, buttonHeight }, "Volume" };
constexpr ControlRow pflRow { Kind::sign, "_pflButton", "PFL_", "pfl_24", { 0, 0, pflWidth, buttonHeight }, "Pre-fader listening: this channel on the headphones" };
// clang-format on

const juce::Rectangle<int> badgeArea { gap, 12, badgeSize, badgeSize };
}

GhostChannel::GhostChannel (CPlatterdex& e, int deck) : ControlPanel (e, Pace::moving), deckIndex (deck)
{
    fader = addControl (faderRow, deck);
    for (const auto& row : knobTable)
    {
        auto plain = row;
        plain.face = ""; // the words follow the knobs' places
        knobs.push_back (addControl (plain, deck));
    }
    pfl = addControl (pflRow, deck);
}

void GhostChannel::resized()
{
    auto area = getLocalBounds().withTrimmedLeft (badgeArea.getRight() + gap).withTrimmedRight (gap);
    const auto centred = [&] (juce::Rectangle<int> r, int height)
    { return r.withSizeKeepingCentre (r.getWidth(), height); };
    const auto forFader = area.withTrimmedRight (pflWidth + gap);

    const auto each = knobWidth + knobGap;
    const auto room =
        juce::jlimit (0, static_cast<int> (knobs.size()), (forFader.getWidth() - leastFader - gap) / each);
    const auto faderWidth = juce::jlimit (0, mostFader, forFader.getWidth() - room * each - gap);
    fader->setBounds (centred (area.removeFromLeft (faderWidth), buttonHeight));
    area.removeFromLeft (gap);

    clearLabels();
    for (size_t i = 0; i < knobs.size(); ++i)
    {
        const auto shown = static_cast<int> (i) < room;
        knobs[i]->setVisible (shown);
        if (!shown)
            continue;
        auto place = area.removeFromLeft (knobWidth).withTrimmedTop (1);
        area.removeFromLeft (knobGap);
        knobs[i]->setBounds (place.removeFromTop (knobWidth));
        addLabel (knobTable[i].face, place.removeFromTop (12).expanded (2, 0));
    }
    area.removeFromLeft (gap - knobGap);
    pfl->setBounds (centred (area.removeFromLeft (pflWidth), buttonHeight));
}

void GhostChannel::pollMoving()
{
    pollControls();
    const auto now = engine.decks.deck (deckIndex)->play.on != 0;
    if (now == playing)
        return;
    playing = now;
    repaint (badgeArea);
}

void GhostChannel::paint (juce::Graphics& g)
{
    ControlPanel::paint (g);
    PanelPaint::badge (g, badgeArea, deckIndex, playing);
}

GhostMixerComponent::GhostMixerComponent (CPlatterdex& engine) : crossfader (engine)
{
    setOpaque (true);
    for (size_t deck = 0; deck < channels.size(); ++deck)
    {
        channels[deck] = std::make_unique<GhostChannel> (engine, static_cast<int> (deck));
        addAndMakeVisible (*channels[deck]);
    }
    addAndMakeVisible (crossfader);
}

void GhostMixerComponent::setFourDecks (bool four)
{
    channels[2]->setVisible (four);
    channels[3]->setVisible (four);
    resized();
}

void GhostMixerComponent::resized()
{
    // The decks' channels stand below their decks: A and C on the left, B and D on the right.
    auto left = getLocalBounds().reduced (0, 1);
    const auto middle = left.withSizeKeepingCentre (EditorLayout::globalWidth, left.getHeight());
    crossfader.setBounds (middle);
    auto right = left.withLeft (middle.getRight() + gap).withTrimmedRight (gap);
    left = left.withRight (middle.getX() - gap).withTrimmedLeft (gap);
    const auto place = [this] (juce::Rectangle<int> side, size_t outer, size_t inner)
    {
        if (channels[inner]->isVisible())
            channels[inner]->setBounds (side.removeFromRight (side.getWidth() / 2));
        channels[outer]->setBounds (side);
    };
    place (left, 0, 2);
    place (right, 1, 3);
}

void GhostMixerComponent::paint (juce::Graphics& g)
{
    const auto tile = skin::strip ("ghost_mixer", g);
    for (int x = 0; x < getWidth(); x += tile.width)
        tile.drawPart (g, { x, 0 }, { std::min (tile.width, getWidth() - x), tile.height }, 0);
}

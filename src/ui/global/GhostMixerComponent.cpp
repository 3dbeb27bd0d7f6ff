#include "ui/global/GhostMixerComponent.h"

#include "skin/Skin.h"
#include "ui/layout/EditorLayout.h"
#include "ui/panel/MixerControls.h"

namespace
{
constexpr int gap = 4, knobWidth = 28, knobHeight = 40;
constexpr int pflWidth = 24, buttonHeight = 24, leastFader = 50, knobGap = 2, mostFader = 160;

/** A knob whose word stands below it, the most wanted first. */
struct NamedKnob
{
    ControlSpec control;
    const char* word;
};

constexpr NamedKnob knobTable[] {
    { MixerControls::high, "HI" },     { MixerControls::mid, "MID" },   { MixerControls::low, "LOW" },
    { MixerControls::filter, "FILT" }, { MixerControls::gain, "GAIN" },
};

constexpr juce::Point<int> badgePlace { gap, 12 };
constexpr int badgeEnd = gap + DeckBadge::size;

/** The volume fader, lying. */
constexpr ControlSpec lyingFader()
{
    auto fader = MixerControls::volume.withFace ("crossfader_track");
    fader.kind = ControlSpec::Kind::level;
    return fader;
}
}

GhostChannel::GhostChannel (CPlatterdex& e, int deck) : ControlPanel (e), badge (e, deck)
{
    badge.setTopLeftPosition (badgePlace);
    addAndMakeVisible (badge);
    fader = addControl (lyingFader(), deck, { leastFader, buttonHeight });
    for (const auto& knob : knobTable) // their words follow their places
        knobs.push_back (addControl (knob.control.withFace (""), deck, { knobWidth, knobHeight }));
    pfl = addControl (MixerControls::pfl.withFace ("pfl_24"), deck, { pflWidth, buttonHeight });
}

void GhostChannel::resized()
{
    auto area = getLocalBounds().withTrimmedLeft (badgeEnd + gap).withTrimmedRight (gap);
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
        addLabel (knobTable[i].word, place.removeFromTop (12).expanded (2, 0));
    }
    area.removeFromLeft (gap - knobGap);
    pfl->setBounds (centred (area.removeFromLeft (pflWidth), buttonHeight));
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

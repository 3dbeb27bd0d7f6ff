#include "ui/global/GhostMixerComponent.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"
#include "skin/Skin.h"
#include "support/language/Translate.h"
#include "ui/layout/EditorLayout.h"
#include "ui/panel/MixerControls.h"

namespace
{
constexpr int gap = 4, tight = 2;
constexpr int rowHeight = 20, sideWidth = 22, pflWidth = 24, buttonHeight = 24;
constexpr int knobWidth = 28, knobHeight = 28, wordHeight = 12;
constexpr int leastKills = 70, mostKills = 188;

/** A knob whose word stands below it, the most wanted first. */
struct NamedKnob
{
    ControlSpec control;
    const char* word;
};

constexpr NamedKnob knobTable[] {
    { MixerControls::low, N_ ("LOW") },   { MixerControls::mid, N_ ("MID") },
    { MixerControls::high, N_ ("HI") },   { MixerControls::filter, N_ ("FILT") },
    { MixerControls::gain, N_ ("GAIN") },
};

/** The volume fader, lying. */
constexpr ControlSpec lyingFader()
{
    auto fader = MixerControls::volume.withFace ("crossfader_track");
    fader.kind = ControlSpec::Kind::level;
    return fader;
}
}

GhostChannel::GhostChannel (CPlatterdex& e, int d)
    : ControlPanel (e),
      deck (d),
      badge (e, d),
      side (own (std::make_unique<PXTextButton>())),
      meter (own (std::make_unique<PeakMeter> (e, d)))
{
    addAndMakeVisible (badge);
    side.setComponentID ("_assignSideButton");
    side.setSize (sideWidth, rowHeight);
    side.setTooltip (tr ("Side of the crossfader: a click changes it"));
    side.setDeckHue (deck);
    side.onClick = [this] { changeSide(); };
    for (const auto& kill : { MixerControls::killHigh, MixerControls::killMid, MixerControls::killLow })
        kills.push_back (addControl (kill, deck, { sideWidth, rowHeight }));
    fader = addControl (lyingFader(), deck, { leastKills, rowHeight });
    for (const auto& knob : knobTable) // their words follow their places
        knobs.push_back (addControl (knob.control.withFace (""), deck, { knobWidth, knobHeight }));
    pfl = addControl (MixerControls::pfl.withFace ("pfl_24"), deck, { pflWidth, buttonHeight });
}

void GhostChannel::changeSide()
{
    const auto isLeft = engine.settings.deckSetup[static_cast<size_t> (deck)].crossfaderSide == 0;
    engine.edit (
        CommandTable::numberOf (isLeft ? "CROSSFADER_ASSIGN_RIGHT_" : "CROSSFADER_ASSIGN_LEFT_", deck), 1.0f);
    refresh();
}

void GhostChannel::pollMoving()
{
    pollControls();
    const auto isLeft = engine.settings.deckSetup[static_cast<size_t> (deck)].crossfaderSide == 0;
    side.setButtonText (isLeft ? "L" : "R");
    side.setToggleState (true, juce::dontSendNotification);
}

void GhostChannel::resized()
{
    auto area = getLocalBounds();
    const auto centred = [] (juce::Rectangle<int> r, int height)
    { return r.withSizeKeepingCentre (r.getWidth(), height); };
    const auto takeLeft = [&area] (int width, int space)
    {
        const auto taken = area.removeFromLeft (width);
        area.removeFromLeft (space);
        return taken;
    };

    auto first = takeLeft (sideWidth, tight);
    badge.setBounds (first.removeFromTop (rowHeight).withSizeKeepingCentre (rowHeight, rowHeight));
    side.setBounds (first.removeFromBottom (rowHeight));
    pfl->setBounds (centred (area.removeFromRight (pflWidth), buttonHeight));

    const auto each = knobWidth + tight, fixed = 2 * gap + PeakMeter::thickness;
    const auto room =
        juce::jlimit (0, static_cast<int> (knobs.size()), (area.getWidth() - leastKills - fixed) / each);
    const auto width = juce::jlimit (0, mostKills, area.getWidth() - fixed - room * each);
    auto middle = takeLeft (width, gap);
    fader->setBounds (middle.removeFromBottom (rowHeight));
    middle = middle.removeFromTop (rowHeight);
    for (size_t i = 0; i < kills.size(); ++i)
    {
        const auto left = static_cast<int> (kills.size() - i);
        kills[i]->setBounds (middle.removeFromLeft ((middle.getWidth() - (left - 1) * tight) / left));
        middle.removeFromLeft (tight);
    }
    meter.setBounds (takeLeft (PeakMeter::thickness, gap));

    clearLabels();
    for (size_t i = 0; i < knobs.size(); ++i)
    {
        const auto isShown = static_cast<int> (i) < room;
        knobs[i]->setVisible (isShown);
        if (!isShown)
            continue;
        auto place = takeLeft (knobWidth, tight);
        knobs[i]->setBounds (place.removeFromTop (knobHeight));
        addLabel (tr (knobTable[i].word), place.removeFromTop (wordHeight).expanded (tight, 0));
    }
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
    if (getLocalBounds().isEmpty())
        return; // hidden, as while the page "MIXER" is shown
    // The decks' channels stand below their decks: A and C on the left, B and D on the right.
    auto left = getLocalBounds().reduced (0, 1);
    const auto middle = left.withSizeKeepingCentre (EditorLayout::globalWidth, left.getHeight());
    crossfader.setBounds (middle);
    auto right = left.withLeft (middle.getRight() + gap).withTrimmedRight (gap);
    left = left.withRight (middle.getX() - gap).withTrimmedLeft (gap);
    const auto place = [this] (juce::Rectangle<int> side, size_t outer, size_t inner)
    {
        const auto half = side.withTrimmedLeft (side.getWidth() - (side.getWidth() - gap) / 2);
        channels[inner]->setBounds (half);
        if (channels[inner]->isVisible())
            side.setRight (half.getX() - gap);
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

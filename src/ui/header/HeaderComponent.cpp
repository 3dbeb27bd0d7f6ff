#include "ui/header/HeaderComponent.h"

#include "skin/Palette.h"
#include "skin/Skin.h"
#include "ui/layout/EditorLayout.h"

#include <algorithm>

namespace
{
constexpr int leftPart = 159, rightPart = 241;
const juce::Point<int> logoPlace { 6, 8 };
constexpr int freeTop = 17; // above the block between the decks, which reaches into the header
}

HeaderComponent::HeaderComponent (CPlatterdex& engine, HeaderActions actions)
    : buttons (engine, std::move (actions)),
      levels (engine),
      news (engine)
{
    addAndMakeVisible (buttons);
    addAndMakeVisible (levels);
    addAndMakeVisible (news);
}

void HeaderComponent::resized()
{
    auto area = getLocalBounds();
    levels.setBounds (area.removeFromRight (HeaderLevels::width));
    news.setBounds (
        getLocalBounds().withSizeKeepingCentre (EditorLayout::globalWidth, getHeight()).withHeight (freeTop));
    buttons.setBounds (
        area.withTrimmedLeft (leftPart).withWidth (std::min (HeaderButtons::width, news.getX() - leftPart)));
}

void HeaderComponent::paint (juce::Graphics& g)
{
    const auto tile = skin::strip ("header_tile", g);
    for (int x = leftPart; x < getWidth() - rightPart; x += tile.width)
        tile.drawPart (g, { x, 0 }, { std::min (tile.width, getWidth() - rightPart - x), tile.height }, 0);
    skin::strip ("header_left", g).drawPart (g, {}, { leftPart, getHeight() }, 0);
    skin::strip ("header_right", g)
        .drawPart (g, { getWidth() - rightPart, 0 }, { rightPart, getHeight() }, 0);
    const auto logo = skin::strip ("logo", g);
    logo.draw (g, juce::Rectangle<int> (logo.width, logo.height) + logoPlace, 0);
}

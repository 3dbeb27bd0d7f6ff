#include "ui/browser/rating/PlaylistTableItemRating.h"

#include "skin/Palette.h"

#include <algorithm>

namespace
{
constexpr int margin = 4, pitch = 16, starSize = 12;
constexpr float offAlpha =
    0.5f; ///< of the dots in place of stars that are out, seen on the ground of a selected row too

/** The number of stars up to a place: none left of the middle of the first. */
int starsAt (float x)
{
    return juce::jlimit (
        0, PlaylistTableItemRating::most,
        juce::roundToInt ((x - static_cast<float> (margin)) / static_cast<float> (pitch) + 0.3f));
}
}

void PlaylistTableItemRating::show (int row, int stars)
{
    stars = std::clamp (stars, 0, most);
    if (row == shownRow && stars == lit)
        return;
    shownRow = row;
    lit = stars;
    hovered = -1;
    repaint();
}

void PlaylistTableItemRating::paintStars (juce::Graphics& g, juce::Rectangle<int> area, int stars, int hover)
{
    // One path for all sizes, made once.
    static const auto star = []
    {
        juce::Path made;
        made.addStar ({ 0.0f, 0.0f }, 5, 0.42f, 1.0f);
        return made;
    }();
    const auto y = static_cast<float> (area.getCentreY());
    const auto shown = hover >= 0 ? hover : stars;
    for (int i = 0; i < most; ++i)
    {
        const auto x = static_cast<float> (area.getX() + margin + i * pitch + pitch / 2);
        if (x + starSize / 2 > static_cast<float> (area.getRight()))
            return;
        g.setColour (i < shown ? (hover >= 0 ? palette::accent : palette::value)
                               : palette::label.withMultipliedAlpha (offAlpha));
        g.fillPath (star, juce::AffineTransform::scale (i < shown ? 6.0f : 2.5f).translated (x, y));
    }
}

void PlaylistTableItemRating::paint (juce::Graphics& g)
{
    paintStars (g, getLocalBounds(), lit, hovered);
}

void PlaylistTableItemRating::setHover (int stars)
{
    if (stars == hovered)
        return;
    hovered = stars;
    repaint();
}

void PlaylistTableItemRating::mouseMove (const juce::MouseEvent& event)
{
    setHover (starsAt (event.position.x));
}

void PlaylistTableItemRating::mouseDown (const juce::MouseEvent& event)
{
    if (!event.mods.isPopupMenu()) // which opens the row's menu
        setHover (starsAt (event.position.x));
}

void PlaylistTableItemRating::mouseUp (const juce::MouseEvent& event)
{
    auto wanted = starsAt (event.position.x);
    setHover (-1);
    if (event.mods.isPopupMenu() || !getLocalBounds().contains (event.getPosition()))
        return;
    if (event.mouseWasClicked() && wanted == lit && wanted > 0)
        --wanted; // the last lit star goes out
    if (wanted == lit)
        return;
    lit = wanted;
    repaint();
    if (onRate != nullptr)
        onRate (shownRow, wanted);
}

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

/** The stars of one row: 0 to 5, set by a click or a drag. A click on the last lit star takes it away. Message thread. */
class PlaylistTableItemRating : public juce::Component
{
public:
    static constexpr int most = 5;

    /** @param stars   0 to 5; more are 5 */
    void show (int row, int stars);

    /** The row, as it was shown, and its new number of stars. */
    std::function<void (int row, int stars)> onRate;

    int row() const noexcept { return shownRow; }
    int stars() const noexcept { return lit; }

    /** Draws stars as every view does. @param hover   the stars that a click would set, or -1 */
    static void paintStars (juce::Graphics&, juce::Rectangle<int> area, int stars, int hover = -1);

    void paint (juce::Graphics&) override;
    void mouseMove (const juce::MouseEvent&) override;
    void mouseExit (const juce::MouseEvent&) override { setHover (-1); }
    void mouseDown (const juce::MouseEvent&) override;
    void mouseDrag (const juce::MouseEvent& event) override { mouseMove (event); }
    void mouseUp (const juce::MouseEvent&) override;

private:
    void setHover (int stars);

    int shownRow = -1, lit = 0, hovered = -1;
};

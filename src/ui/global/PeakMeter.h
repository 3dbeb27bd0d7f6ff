#pragma once

#include "ui/poll/PollingView.h"

#include <array>

class CPlatterdex;

/** The true stereo peaks of a deck's channel before its fader, upright: two bars that rise by the cube root of the level, and
    above them a lamp for each side that stays red for 2 s after a sample of full scale. So the gain is set by it while the
    fader is down. */
class PeakMeter : public PollingView
{
public:
    static constexpr int thickness = 16, lampHeight = 6,
                         lampGap = 4; ///< pixels; the bars take the rest of the height

    /** @param deck   0 to 3 */
    PeakMeter (CPlatterdex&, int deck);

    /** Lit pixels, left and right. */
    const std::array<int, 2>& lengths() const noexcept { return shown.lengths; }
    bool showsClip (int side) const noexcept { return shown.clipped[static_cast<size_t> (side)]; }

    void paint (juce::Graphics&) override;

private:
    void pollMoving() override;
    juce::Rectangle<int> bar (int side) const;

    struct Shown
    {
        std::array<int, 2> lengths {};
        std::array<bool, 2> clipped {};
        bool operator== (const Shown&) const = default;
    };

    const CPlatterdex& engine;
    const int deck;
    Shown shown;
};

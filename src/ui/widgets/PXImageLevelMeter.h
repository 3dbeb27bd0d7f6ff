#pragma once

#include "ui/command/CommandBinding.h"
#include "ui/look/SkinPicture.h"
#include "ui/poll/PollingView.h"

#include <array>

/** The bars of two channels, left and right: lit pixels for the cube root of the level.

    The picture is 86 pixels long and 16 across, 7 for each bar and 2 between them. It polls itself. */
class PXImageLevelMeter : public PollingView
{
public:
    static constexpr int length = 86, thickness = 16, barThickness = 7, secondBar = 9;

    /** The lit pixels of a level. @param level   linear; above 1 counts as 1, below 0 and NaN as 0 */
    static int litLength (float level) noexcept;

    /** @param both   two frames: unlit and lit */
    void setImages (const SkinPicture& both);
    void setImages (const SkinPicture& unlit, const SkinPicture& lit);

    /** The numbers to read levels from; the same twice for a meter of one channel. */
    void bind (CPlatterdex&, int left, int right);

    /** Shows levels by hand. */
    void setLevels (float left, float right);

    /** Lit pixels, left and right. */
    const std::array<int, 2>& lengths() const noexcept { return shown; }

    void paint (juce::Graphics&) override;

protected:
    explicit PXImageLevelMeter (bool upright);
    void pollMoving() override;

private:
    /** A bar's pixels from one level to another, in the picture. */
    juce::Rectangle<int> span (size_t bar, int from, int to) const;
    juce::Point<int> pictureOrigin() const;

    const bool upright;
    SkinPicture unlit, lit;
    int litFrame = 0;
    std::array<CommandBinding, 2> levels;
    std::array<int, 2> shown {};
};

/** Grows to the right; the left channel is the upper bar. */
class PXImageHorizontalLevelMeter : public PXImageLevelMeter
{
public:
    PXImageHorizontalLevelMeter();
};

/** Grows upwards; the left channel is the left bar. */
class PXImageVerticalLevelMeter : public PXImageLevelMeter
{
public:
    PXImageVerticalLevelMeter();
};

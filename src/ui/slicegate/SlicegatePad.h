#pragma once

#include "instruments/slicegate/SlicegateDeckState.h"
#include "ui/slicegate/PadMenu.h"
#include "ui/widgets/PXImageButton.h"

/** A pad: a button with a small picture of its curves, its name, and a bar that grows while it runs. The left button plays
    it as it goes down; the right one opens its menu. */
class SlicegatePad : public PXImageButton
{
public:
    static constexpr int width = 52, height = 47;

    /** @param deck   0 to 3
        @param pad    0 to 7 */
    SlicegatePad (CPlatterdex&, int deck, int pad);

    PadMenu& menu() noexcept { return popup; }

    void poll() override;
    void paint (juce::Graphics&) override;

private:
    /** All that the picture shows. */
    struct Shown
    {
        PadState state = PadState::idle;
        int barWidth = 0;
        std::uint32_t revision = 0;
        bool operator== (const Shown&) const = default;
    };

    void openPopup();
    void readContents();

    CPlatterdex& engine;
    SlicegateDeckState& state;
    const int deck, pad;
    PadMenu popup;
    Shown shown;
    juce::String name;
    juce::Path volume, time; ///< empty for a curve that changes nothing
};

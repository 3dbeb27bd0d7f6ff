#include "ui/MixerBar.h"

#include "engine/CommandTable.h"
#include "ui/Look.h"

namespace
{
constexpr int margin = 8, gap = 4, group = 16, buttonHeight = 24, meterWidth = 120;
constexpr std::array masterMeters { 1005, 1006 };

enum class Kind
{
    knob,
    fader,
    button
};

struct Control
{
    const char *text, *constant;
    Kind kind;
    int labelWidth, width;
    int space;   ///< after it
    double rest; ///< of a knob or fader
};

/** From left to right; the crossfader takes what the others leave. */
constexpr Control table[] {
    { "PHONES", "MONITOR_VOLUME", Kind::knob, 52, 40, gap, 1.0 },
    { "MIX", "MONITOR_MIX", Kind::knob, 28, 40, gap, 0.0 },
    { "Split", "MONITOR_PHONE_SPLIT", Kind::button, 0, 52, gap, 0.0 },
    { "Drive", "MONITOR_OVERDRIVE", Kind::button, 0, 52, group, 0.0 },
    { "<", "AUTO_CROSSFADER_LEFT", Kind::button, 0, 32, gap, 0.0 },
    { "", "CROSSFADER", Kind::fader, 0, 0, gap, 0.5 },
    { ">", "AUTO_CROSSFADER_RIGHT", Kind::button, 0, 32, group, 0.0 },
    { "MASTER", "MASTER_VOLUME", Kind::knob, 52, 40, gap, 1.0 },
};
static_assert (std::size (table) == MixerBar::controlCount);
}

MixerBar::Layout::Layout (juce::Rectangle<int> bar)
{
    bar.reduce (margin, gap);
    meter = bar.removeFromRight (meterWidth).withSizeKeepingCentre (meterWidth, buttonHeight);
    bar.removeFromRight (gap);
    auto left = bar.getWidth(); // what the crossfader gets
    for (const auto& control : table)
        left -= control.labelWidth + control.width + control.space;
    for (size_t i = 0; i < controlCount; ++i)
    {
        const auto& control = table[i];
        labels[i] = bar.removeFromLeft (control.labelWidth);
        const auto width = control.kind == Kind::fader ? left : control.width;
        controls[i] = bar.removeFromLeft (width);
        if (control.kind == Kind::button)
            controls[i] = controls[i].withSizeKeepingCentre (width, buttonHeight);
        bar.removeFromLeft (control.space);
    }
}

MixerBar::MixerBar (CPlatterdex& engine)
    : PollingView (Pace::moving),
      meter (engine, { masterMeters.begin(), masterMeters.end() }, Look::selected)
{
    setOpaque (true);
    for (size_t i = 0; i < controlCount; ++i)
    {
        const auto& control = table[i];
        const auto number = CommandTable::numberOf (control.constant);
        if (control.kind == Kind::button)
        {
            buttons[i] = std::make_unique<CommandButton> (engine, number, control.text);
            addAndMakeVisible (*buttons[i]);
            continue;
        }
        const auto shape =
            control.kind == Kind::knob ? CommandSlider::Shape::knob : CommandSlider::Shape::level;
        sliders[i] = std::make_unique<CommandSlider> (engine, number, shape, control.rest);
        addAndMakeVisible (*sliders[i]);
    }
    addAndMakeVisible (meter);
}

void MixerBar::resized()
{
    const Layout layout (getLocalBounds());
    for (size_t i = 0; i < controlCount; ++i)
        (sliders[i] != nullptr ? static_cast<juce::Component&> (*sliders[i]) : *buttons[i])
            .setBounds (layout.controls[i]);
    meter.setBounds (layout.meter);
}

void MixerBar::pollMoving()
{
    for (size_t i = 0; i < controlCount; ++i)
        sliders[i] != nullptr ? sliders[i]->poll() : buttons[i]->poll();
    meter.poll();
}

void MixerBar::paint (juce::Graphics& g)
{
    const Layout layout (getLocalBounds());
    Look::fillRaised (g, getLocalBounds(), Look::panel);
    g.setColour (Look::label);
    g.setFont (Look::labelFont());
    for (size_t i = 0; i < controlCount; ++i)
        if (sliders[i] != nullptr)
            g.drawText (table[i].text, layout.labels[i], juce::Justification::centredLeft, false);
}

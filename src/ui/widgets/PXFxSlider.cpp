#include "ui/widgets/PXFxSlider.h"

#include "engine/CommandTable.h"
#include "fx/FxKnobs.h"
#include "skin/Palette.h"
#include "ui/look/SMLookAndFeel.h"

namespace
{
constexpr int lineHeight = 14;

int commandOfSlot (const char* family, int group, int slot)
{
    return CommandTable::numberOf (std::string (family) + "_" + std::to_string (slot + 1) + "_GROUP_", group);
}
}

PXFxSlider::PXFxSlider (const juce::String& name) : PXImageRotarySlider (name) {}

void PXFxSlider::bindSlot (CPlatterdex& engine, int group, int slot)
{
    select = { engine, commandOfSlot ("EFFECT_SELECT", group, slot) };
    bind (engine, commandOfSlot ("EFFECT_PARAM", group, slot));
}

void PXFxSlider::poll()
{
    PXImageRotarySlider::poll();
    const auto kind = FxType::indexOf (select.value());
    setDefault (FxType::restStep (kind)); // each effect has its own
    const auto name = select.text();
    const auto text = command().text();
    if (name == shownName && text == shownText)
        return;
    shownName = name;
    shownText = text;
    repaint();
}

const char* PXFxSlider::parameterName() const noexcept
{
    return FxType::stepName (FxType::indexOf (select.value()));
}

juce::String PXFxSlider::valueWords() const
{
    return select.text() + " " + parameterName() + " " + command().text();
}

juce::Rectangle<int> PXFxSlider::knobBounds() const
{
    auto area = getLocalBounds();
    const auto spare = getHeight() - knobHeight();
    if (spare >= lineHeight)
        area.removeFromBottom (lineHeight);
    if (spare >= 2 * lineHeight)
        area.removeFromTop (lineHeight);
    return area;
}

void PXFxSlider::paint (juce::Graphics& g)
{
    PXImageRotarySlider::paint (g);
    auto area = getLocalBounds();
    const auto knob = knobBounds();
    if (knob.getY() > 0)
    {
        g.setFont (SMLookAndFeel::labelFont());
        g.setColour (isEnabled() ? palette::label : palette::disabledText);
        g.drawFittedText (shownName.toUpperCase(), area.removeFromTop (knob.getY()),
                          juce::Justification::centred, 1, 0.7f);
    }
    if (knob.getBottom() < getHeight())
    {
        g.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
        g.setColour (!isEnabled()       ? palette::disabledText
                     : isBeingChanged() ? palette::accent
                                        : palette::value);
        g.drawFittedText (shownText, area.withTop (knob.getBottom()), juce::Justification::centred, 1, 0.7f);
    }
}

#include "ui/Look.h"

#include <array>

namespace
{
constexpr float cornerRadius = 2.0f;

/** The ground of a button, by what the hand does and whether it is lit. */
juce::Colour buttonGround (bool lit, juce::Colour hue, bool over, bool down)
{
    if (lit)
        return down ? hue.darker (0.25f) : (over ? hue.brighter (0.3f) : hue);
    return down ? Look::line : (over ? Look::well.brighter (0.12f) : Look::well);
}
}

Look::Look()
{
    setColourScheme ({ ground, panel, well, line, value, line, value, line, value });
    setColour (juce::ResizableWindow::backgroundColourId, ground);
    setColour (juce::TextButton::buttonColourId, well);
    setColour (juce::TextButton::buttonOnColourId, selected);
    setColour (juce::TextButton::textColourOffId, value);
    setColour (juce::TextButton::textColourOnId, dark);
    setColour (juce::ComboBox::backgroundColourId, well);
    setColour (juce::ComboBox::outlineColourId, line);
    setColour (juce::ListBox::backgroundColourId, panel);
    setColour (juce::ListBox::outlineColourId, line);
    setColour (juce::TextEditor::backgroundColourId, well);
    setColour (juce::TextEditor::outlineColourId, line);
    setColour (juce::TextEditor::focusedOutlineColourId, focus);
    setColour (juce::TextEditor::textColourId, value);
    setColour (juce::TextEditor::highlightColourId, line);
    setColour (juce::CaretComponent::caretColourId, focus);
    setColour (juce::ScrollBar::thumbColourId, line);
    setColour (juce::PopupMenu::backgroundColourId, panel);
    setColour (juce::PopupMenu::highlightedBackgroundColourId, line);
    setColour (juce::AlertWindow::backgroundColourId, panel);
    setColour (juce::Slider::trackColourId, label);
    setColour (juce::TooltipWindow::backgroundColourId, line);
    setColour (juce::TooltipWindow::textColourId, value);
}

juce::Colour Look::deckHue (int deck) noexcept
{
    static const std::array hues { juce::Colour (0xff56b4e9), juce::Colour (0xffe69f00),
                                   juce::Colour (0xff2fbf8f), juce::Colour (0xffd985b5) };
    return hues[static_cast<size_t> (juce::jlimit (0, 3, deck))];
}

juce::Font Look::font (float size)
{
    return { juce::Font::getDefaultSansSerifFontName(), size, juce::Font::bold };
}

juce::Font Look::labelFont()
{
    return font (labelSize).withExtraKerningFactor (0.04f);
}

void Look::fillRaised (juce::Graphics& g, juce::Rectangle<int> area, juce::Colour colour)
{
    g.setColour (colour);
    g.fillRect (area);
    g.setColour (colour.brighter (0.1f));
    g.fillRect (area.removeFromTop (1));
    g.setColour (colour.darker (0.4f));
    g.fillRect (area.removeFromBottom (1));
}

juce::Font Look::getTextButtonFont (juce::TextButton&, int)
{
    return font (valueSize);
}

juce::Font Look::getLabelFont (juce::Label& of)
{
    return of.getFont();
}

juce::Font Look::getComboBoxFont (juce::ComboBox&)
{
    return font (valueSize);
}

juce::Font Look::getPopupMenuFont()
{
    return font (valueSize);
}

juce::Font Look::getAlertWindowTitleFont()
{
    return font (titleSize);
}

juce::Font Look::getAlertWindowMessageFont()
{
    return font (valueSize);
}

juce::Font Look::getAlertWindowFont()
{
    return font (valueSize);
}

void Look::drawButtonBackground (juce::Graphics& g, juce::Button& button, const juce::Colour&, bool over,
                                 bool down)
{
    const auto area = button.getLocalBounds().toFloat();
    const auto lit = button.getToggleState();
    const auto colour = buttonGround (lit, button.findColour (juce::TextButton::buttonOnColourId), over, down)
                            .withMultipliedAlpha (button.isEnabled() ? 1.0f : 0.4f);
    g.setColour (colour);
    g.fillRoundedRectangle (area, cornerRadius);
    g.setColour (down ? colour.darker (0.4f) : colour.brighter (0.15f));
    g.fillRect (area.reduced (cornerRadius, 0.0f).removeFromTop (1.0f));
    if (button.hasKeyboardFocus (false))
    {
        g.setColour (focus);
        g.drawRoundedRectangle (area.reduced (0.5f), cornerRadius, 1.0f);
    }
}

void Look::drawButtonText (juce::Graphics& g, juce::TextButton& button, bool, bool)
{
    const auto id =
        button.getToggleState() ? juce::TextButton::textColourOnId : juce::TextButton::textColourOffId;
    g.setColour (button.findColour (id).withMultipliedAlpha (button.isEnabled() ? 1.0f : 0.4f));
    g.setFont (getTextButtonFont (button, button.getHeight()));
    g.drawFittedText (button.getButtonText(), button.getLocalBounds().reduced (4, 0),
                      juce::Justification::centred, 1);
}

void Look::drawLinearSlider (juce::Graphics& g, int x, int y, int width, int height, float sliderPos, float,
                             float, juce::Slider::SliderStyle, juce::Slider& slider)
{
    const auto upright = slider.isVertical();
    const juce::Rectangle<int> area (x, y, width, height);
    const auto alpha = slider.isEnabled() ? 1.0f : 0.4f;

    const auto track = upright ? area.withSizeKeepingCentre (trackWidth, height)
                               : area.withSizeKeepingCentre (width, trackWidth);
    g.setColour (line.withMultipliedAlpha (alpha));
    g.fillRect (track);

    const auto at = juce::roundToInt (sliderPos);
    const auto across = juce::jmin (capWidth, upright ? slider.getWidth() : slider.getHeight());
    const auto cap = upright
                         ? juce::Rectangle<int> (across, capLength).withCentre ({ area.getCentreX(), at })
                         : juce::Rectangle<int> (capLength, across).withCentre ({ at, area.getCentreY() });
    const auto held = slider.isMouseButtonDown();
    const auto over = slider.isMouseOver (true);
    g.setColour ((held ? line.brighter (0.5f) : (over ? line.brighter (0.35f) : line.brighter (0.2f)))
                     .withMultipliedAlpha (alpha));
    g.fillRoundedRectangle (cap.toFloat(), cornerRadius);
    g.setColour (held ? focus : slider.findColour (juce::Slider::trackColourId).withMultipliedAlpha (alpha));
    g.fillRect (upright ? cap.withSizeKeepingCentre (across, 2) : cap.withSizeKeepingCentre (2, across));
}

void Look::drawRotarySlider (juce::Graphics& g, int x, int y, int width, int height, float sliderPos,
                             float startAngle, float endAngle, juce::Slider& slider)
{
    const auto size = static_cast<float> (juce::jmin (width, height)) - 2.0f;
    const auto area = juce::Rectangle<int> (x, y, width, height).toFloat().withSizeKeepingCentre (size, size);
    const auto centre = area.getCentre();
    const auto radius = 0.5f * size;
    const auto small = size < smallKnob;
    const auto ring = small ? 2.0f : 3.0f, inset = small ? 3.0f : 6.0f;
    const auto angleOf = [=] (double part)
    { return startAngle + static_cast<float> (part) * (endAngle - startAngle); };
    const auto arc = [&] (float from, float to, juce::Colour colour)
    {
        juce::Path path;
        path.addCentredArc (centre.x, centre.y, radius - 2.0f, radius - 2.0f, 0.0f, from, to, true);
        g.setColour (colour);
        g.strokePath (path, juce::PathStrokeType (ring));
    };

    const auto held = slider.isMouseButtonDown();
    const auto angle = angleOf (sliderPos);
    arc (startAngle, endAngle, line);
    arc (angleOf (slider.valueToProportionOfLength (slider.getDoubleClickReturnValue())), angle,
         held ? focus : label);
    g.setColour (line.brighter (held ? 0.5f : (slider.isMouseOver (true) ? 0.35f : 0.2f)));
    g.fillEllipse (area.reduced (inset));
    g.setColour (held ? focus : value);
    g.drawLine ({ centre.getPointOnCircumference (0.3f * radius, angle),
                  centre.getPointOnCircumference (radius - inset, angle) },
                2.0f);
}

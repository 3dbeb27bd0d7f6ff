// Buttons, texts and values.

#include "skin/Palette.h"
#include "ui/look/ButtonSkin.h"
#include "ui/look/SMLookAndFeel.h"

namespace
{
float faceAlphaOf (const juce::Component& component)
{
    return component.isEnabled() ? 1.0f : palette::disabledAlpha;
}

float signAlphaOf (const juce::Component& component)
{
    return component.isEnabled() ? 1.0f : palette::disabledSign;
}

juce::Colour textOf (const juce::Component& component, int colourId)
{
    return component.isEnabled() ? component.findColour (colourId) : palette::disabledText;
}

constexpr int tickWidth = 20, gap = 4, buttonMargin = 4;
constexpr int smallKnob = 28, largeKnob = 40;
}

juce::Font SMLookAndFeel::getTextButtonFont (juce::TextButton&, int height)
{
    return buttonFont (height);
}

void SMLookAndFeel::drawButtonBackground (juce::Graphics& g, juce::Button& button, const juce::Colour&,
                                          bool over, bool down)
{
    buttonPicture (button.getHeight(), skin::Hue::accent)
        .drawWide (g, button.getLocalBounds(),
                   buttonFrame (button.getToggleState(), over, down, button.isEnabled()),
                   faceAlphaOf (button));
    if (button.hasKeyboardFocus (false))
    {
        g.setColour (palette::accent);
        g.drawRect (button.getLocalBounds());
    }
}

void SMLookAndFeel::drawButtonText (juce::Graphics& g, juce::TextButton& button, bool, bool)
{
    const auto id =
        button.getToggleState() ? juce::TextButton::textColourOnId : juce::TextButton::textColourOffId;
    g.setColour (button.isEnabled() ? button.findColour (id) : textOfDisabled (button.getToggleState()));
    g.setFont (getTextButtonFont (button, button.getHeight()));
    g.drawFittedText (button.getButtonText(), button.getLocalBounds().reduced (buttonMargin, 0),
                      juce::Justification::centred, 1, 0.8f);
}

void SMLookAndFeel::drawToggleButton (juce::Graphics& g, juce::ToggleButton& button, bool over, bool down)
{
    auto area = button.getLocalBounds();
    const auto box = area.removeFromLeft (tickWidth).toFloat();
    drawTickBox (g, button, box.getX(), box.getY(), box.getWidth(), box.getHeight(), button.getToggleState(),
                 button.isEnabled(), over, down);
    g.setColour (textOf (button, juce::ToggleButton::textColourId));
    g.setFont (font (valueSize));
    g.drawFittedText (button.getButtonText(), area.withTrimmedLeft (gap), juce::Justification::centredLeft,
                      2);
}

void SMLookAndFeel::drawTickBox (juce::Graphics& g, juce::Component& owner, float x, float y, float width,
                                 float height, bool ticked, bool enabled, bool over, bool down)
{
    SkinPicture ("tickbox").draw (g,
                                  juce::Rectangle<float> (x, y, width, height).getSmallestIntegerContainer(),
                                  buttonFrame (ticked, over, down, enabled), signAlphaOf (owner));
}

void SMLookAndFeel::changeToggleButtonWidthToFitText (juce::ToggleButton& button)
{
    const auto text = font (valueSize).getStringWidth (button.getButtonText());
    button.setSize (tickWidth + gap + text + gap, button.getHeight());
}

void SMLookAndFeel::drawLabel (juce::Graphics& g, juce::Label& label)
{
    g.fillAll (label.findColour (juce::Label::backgroundColourId));
    if (!label.isBeingEdited())
    {
        const auto area = getLabelBorderSize (label).subtractedFrom (label.getLocalBounds());
        const auto type = getLabelFont (label);
        const auto lines =
            std::max (1, static_cast<int> (static_cast<float> (area.getHeight()) / type.getHeight()));
        g.setColour (textOf (label, juce::Label::textColourId));
        g.setFont (type);
        g.drawFittedText (label.getText(), area, label.getJustificationType(), lines,
                          label.getMinimumHorizontalScale());
    }
    g.setColour (label.findColour (juce::Label::outlineColourId));
    g.drawRect (label.getLocalBounds());
}

juce::Font SMLookAndFeel::getLabelFont (juce::Label& label)
{
    return label.getFont();
}

void SMLookAndFeel::fillTextEditorBackground (juce::Graphics& g, int width, int height,
                                              juce::TextEditor& editor)
{
    g.setColour (editor.findColour (juce::TextEditor::backgroundColourId));
    g.fillRect (0, 0, width, height);
}

void SMLookAndFeel::drawTextEditorOutline (juce::Graphics& g, int width, int height, juce::TextEditor& editor)
{
    const auto isWritten = editor.hasKeyboardFocus (true) && !editor.isReadOnly();
    g.setColour (editor.findColour (isWritten ? juce::TextEditor::focusedOutlineColourId
                                              : juce::TextEditor::outlineColourId));
    g.drawRect (0, 0, width, height);
}

void SMLookAndFeel::drawLinearSlider (juce::Graphics& g, int x, int y, int width, int height, float sliderPos,
                                      float, float, juce::Slider::SliderStyle, juce::Slider& slider)
{
    const juce::Rectangle<int> area (x, y, width, height);
    const auto at = juce::roundToInt (sliderPos);
    const auto alpha = signAlphaOf (slider);
    if (slider.isBar())
    {
        g.setColour (slider.findColour (juce::Slider::trackColourId).withMultipliedAlpha (alpha));
        g.fillRect (slider.isVertical() ? area.withTop (at) : area.withRight (at));
        return;
    }

    const auto frame =
        !slider.isEnabled() ? 0 : (slider.isMouseButtonDown() ? 2 : (slider.isMouseOver (true) ? 1 : 0));
    const auto reach = getSliderThumbRadius (slider);
    const juce::Rectangle<int> cap (2 * reach, 2 * reach);
    if (slider.isVertical())
    {
        SkinPicture ("fader_track").drawTall (g, area.expanded (0, reach), 0, alpha);
        SkinPicture ("fader_cap").draw (g, cap.withCentre ({ area.getCentreX(), at }), frame, alpha);
    }
    else
    {
        SkinPicture ("crossfader_track").drawWide (g, area.expanded (reach, 0), 0, alpha);
        SkinPicture ("crossfader_cap").draw (g, cap.withCentre ({ at, area.getCentreY() }), frame, alpha);
    }
}

void SMLookAndFeel::drawRotarySlider (juce::Graphics& g, int x, int y, int width, int height, float sliderPos,
                                      float, float, juce::Slider& slider)
{
    const auto size = juce::jmin (width, height) < largeKnob ? smallKnob : largeKnob;
    const auto changing = slider.isMouseButtonDown() && slider.isEnabled();
    const SkinPicture film ("knob_" + std::to_string (size) + (changing ? "_accent" : ""));
    const auto frame = knobFrame (static_cast<double> (sliderPos), film.frames());
    film.draw (g, { x, y, width, height }, frame, signAlphaOf (slider));
}

void SMLookAndFeel::drawProgressBar (juce::Graphics& g, juce::ProgressBar& bar, int width, int height,
                                     double progress, const juce::String& text)
{
    const juce::Rectangle<int> area (width, height);
    g.setColour (bar.findColour (juce::ProgressBar::backgroundColourId));
    g.fillRect (area);
    // Nothing moves here while the end is not known; the text says what is being done.
    const auto done = progress >= 0.0 && progress <= 1.0 ? juce::roundToInt (progress * width) : 0;
    const auto write = [&] (juce::Rectangle<int> part, juce::Colour colour)
    {
        const juce::Graphics::ScopedSaveState saved (g);
        g.reduceClipRegion (part);
        g.setColour (colour);
        g.setFont (font (valueSize));
        g.drawText (text, area, juce::Justification::centred);
    };
    const auto full = area.withWidth (done);
    g.setColour (bar.findColour (juce::ProgressBar::foregroundColourId));
    g.fillRect (full);
    write (full, palette::ink);
    write (area.withTrimmedLeft (done), palette::value);
}

void SMLookAndFeel::drawGroupComponentOutline (juce::Graphics& g, int width, int, const juce::String& text,
                                               const juce::Justification&, juce::GroupComponent& group)
{
    const auto type = labelFont();
    auto title = juce::Rectangle<int> (width, juce::roundToInt (type.getHeight()) + gap);
    g.setFont (type);
    g.setColour (textOf (group, juce::GroupComponent::textColourId));
    const auto capitals = text.toUpperCase();
    g.drawText (capitals, title.removeFromLeft (type.getStringWidth (capitals) + 2 * gap),
                juce::Justification::centredLeft);
    g.setColour (group.findColour (juce::GroupComponent::outlineColourId));
    g.fillRect (title.withSizeKeepingCentre (title.getWidth(), 1));
}

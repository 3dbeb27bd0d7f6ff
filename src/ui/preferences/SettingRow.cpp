#include "ui/preferences/SettingRow.h"

#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/panel/PanelPaint.h"

#include <utility>

namespace
{
constexpr int controlHeight = 24, gap = 8, browseWidth = 84, boxWidth = 300, sliderWidth = 300,
              sliderTextWidth = 76;

class ToggleRow : public SettingRow
{
public:
    ToggleRow (const juce::String& text, const juce::String& tip, SettingValue v, bool inverted)
        : SettingRow ({}),
          value (std::move (v)),
          isInverted (inverted),
          button (text)
    {
        hold (button, button, tip);
        button.onClick = [this] { value.write (button.getToggleState() != isInverted ? 1.0 : 0.0); };
    }

    void refresh() override
    {
        button.setToggleState ((value.read() != 0.0) != isInverted, juce::dontSendNotification);
    }

private:
    void place (juce::Rectangle<int> area) override { button.setBounds (area); }

    const SettingValue value;
    const bool isInverted;
    juce::ToggleButton button;
};

class ChoiceRow : public SettingRow
{
public:
    ChoiceRow (const juce::String& caption, const juce::String& tip, SettingValue v,
               const juce::StringArray& entries, double f, double s)
        : SettingRow (caption),
          value (std::move (v)),
          first (f),
          step (s)
    {
        hold (box, box, tip);
        box.addItemList (entries, 1);
        box.onChange = [this]
        {
            if (const auto index = box.getSelectedItemIndex(); index >= 0)
                value.write (first + step * index);
        };
    }

    void refresh() override
    {
        if (!box.isPopupActive())
            box.setSelectedItemIndex (juce::roundToInt ((value.read() - first) / step),
                                      juce::dontSendNotification);
    }

private:
    void place (juce::Rectangle<int> area) override { box.setBounds (area.withWidth (boxWidth)); }

    const SettingValue value;
    const double first, step;
    juce::ComboBox box;
};

class SliderRow : public SettingRow
{
public:
    SliderRow (const juce::String& caption, const juce::String& tip, SettingValue v,
               juce::Range<double> range, double interval, double factor, const juce::String& unit)
        : SettingRow (caption),
          value (std::move (v))
    {
        hold (slider, slider, tip);
        slider.setSliderStyle (juce::Slider::LinearHorizontal);
        slider.setRange (range, interval);
        slider.setTextBoxStyle (juce::Slider::TextBoxRight, false, sliderTextWidth, controlHeight);
        slider.setDoubleClickReturnValue (true, value.rest);
        slider.textFromValueFunction = [factor, unit] (double v2)
        { return juce::String (juce::roundToInt (v2 * factor)) + " " + unit; };
        slider.valueFromTextFunction = [factor] (const juce::String& typed)
        { return typed.replaceCharacter (',', '.').getDoubleValue() / factor; };
        slider.updateText();
        slider.onValueChange = [this] { value.write (slider.getValue()); };
    }

    void refresh() override
    {
        if (!slider.isMouseButtonDown (true))
            slider.setValue (value.read(), juce::dontSendNotification);
    }

private:
    void place (juce::Rectangle<int> area) override { slider.setBounds (area.withWidth (sliderWidth)); }

    const SettingValue value;
    juce::Slider slider;
};

class PathRow : public SettingRow
{
public:
    PathRow (const juce::String& caption, const juce::String& tip, SettingRows::PathValue v)
        : SettingRow (caption),
          value (std::move (v))
    {
        hold (field, field, tip);
        field.setSelectAllWhenFocused (true);
        field.onReturnKey = field.onFocusLost = [this] { keep(); };
        hold (browseButton, browseButton, tr ("Chooses the place."));
        browseButton.onClick = [this]
        {
            value.browse (
                [here = SafePointer (this)] (const juce::File& chosen)
                {
                    if (here == nullptr || chosen == juce::File())
                        return;
                    here->value.write (chosen.getFullPathName());
                    here->refresh();
                });
        };
    }

    void refresh() override
    {
        if (!field.hasKeyboardFocus (true) && field.getText() != value.read())
            field.setText (value.read(), false);
    }

private:
    void place (juce::Rectangle<int> area) override
    {
        browseButton.setBounds (area.removeFromRight (browseWidth));
        area.removeFromRight (gap);
        field.setBounds (area);
    }

    void keep()
    {
        if (field.getText() != value.read())
            value.write (field.getText());
    }

    const SettingRows::PathValue value;
    juce::TextEditor field;
    PXTextButton browseButton { tr ("Browse...") };
};

class TextRow : public SettingRow
{
public:
    TextRow (const juce::String& caption, std::function<juce::String()> r)
        : SettingRow (caption),
          read (std::move (r))
    {
        hold (label, label, {});
        label.setBorderSize ({});
        label.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
    }

    void refresh() override { label.setText (read(), juce::dontSendNotification); }

private:
    void place (juce::Rectangle<int> area) override { label.setBounds (area); }

    const std::function<juce::String()> read;
    juce::Label label;
};
}

SettingRow::SettingRow (juce::String caption) : text (std::move (caption)) {}

void SettingRow::hold (juce::Component& control, juce::SettableTooltipClient& tipped, const juce::String& tip)
{
    tipped.setTooltip (tip);
    control.setTitle (text); // named for screen readers
    addAndMakeVisible (control);
}

void SettingRow::paint (juce::Graphics& g)
{
    g.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
    g.setColour (palette::value);
    g.drawFittedText (text, getLocalBounds().removeFromLeft (captionWidth - gap),
                      juce::Justification::centredLeft, 1, 0.8f);
}

void SettingRow::resized()
{
    auto area = getLocalBounds().withSizeKeepingCentre (getWidth(), controlHeight);
    if (text.isNotEmpty())
        area.removeFromLeft (captionWidth);
    place (area);
}

namespace SettingRows
{
std::unique_ptr<SettingRow> toggle (const juce::String& text, const juce::String& tip, SettingValue value,
                                    bool isInverted)
{
    return std::make_unique<ToggleRow> (text, tip, std::move (value), isInverted);
}

std::unique_ptr<SettingRow> choice (const juce::String& caption, const juce::String& tip, SettingValue value,
                                    const juce::StringArray& entries, double first, double step)
{
    return std::make_unique<ChoiceRow> (caption, tip, std::move (value), entries, first, step);
}

std::unique_ptr<SettingRow> slider (const juce::String& caption, const juce::String& tip, SettingValue value,
                                    juce::Range<double> range, double interval, double factor,
                                    const juce::String& unit)
{
    return std::make_unique<SliderRow> (caption, tip, std::move (value), range, interval, factor, unit);
}

std::unique_ptr<SettingRow> path (const juce::String& caption, const juce::String& tip, PathValue value)
{
    return std::make_unique<PathRow> (caption, tip, std::move (value));
}

std::unique_ptr<SettingRow> text (const juce::String& caption, std::function<juce::String()> read)
{
    return std::make_unique<TextRow> (caption, std::move (read));
}
}

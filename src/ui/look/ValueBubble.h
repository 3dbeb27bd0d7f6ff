#pragma once

#include "skin/Palette.h"
#include "ui/look/SMLookAndFeel.h"

/** A line beside a control that is being changed: its name and its value. It goes a second after the last change, and never
    takes the mouse. Message thread. */
class ValueBubble : public juce::Component, private juce::Timer
{
public:
    static constexpr int stayMs = 1000;

    ValueBubble()
    {
        setInterceptsMouseClicks (false, false);
        setAlwaysOnTop (true);
    }

    /** Shows a line above a control, or below it where there is no room above. Nothing happens without a window. */
    void show (const juce::Component& control, const juce::String& line)
    {
        auto* window = control.getTopLevelComponent();
        if (window == nullptr || window == &control)
            return;
        text = line;
        const auto width = juce::roundToInt (std::ceil (font().getStringWidthFloat (text))) + 2 * padding;
        const auto over = window->getLocalArea (&control, control.getLocalBounds());
        auto area = juce::Rectangle<int> (width, height).withCentre (over.getCentre());
        area.setY (over.getY() - height - distance);
        if (area.getY() < 0)
            area.setY (over.getBottom() + distance);
        setBounds (area.constrainedWithin (window->getLocalBounds()));
        if (getParentComponent() != window)
            window->addChildComponent (*this);
        setVisible (true);
        repaint();
        startTimer (stayMs);
    }

    const juce::String& line() const noexcept { return text; }

    void paint (juce::Graphics& g) override
    {
        g.fillAll (palette::line);
        g.setColour (palette::accent);
        g.drawRect (getLocalBounds(), 1);
        g.setFont (font());
        g.drawText (text, getLocalBounds(), juce::Justification::centred, false);
    }

private:
    static constexpr int height = 20, padding = 6, distance = 2;

    static juce::Font font() { return SMLookAndFeel::font (SMLookAndFeel::valueSize); }

    void timerCallback() override
    {
        stopTimer();
        setVisible (false);
    }

    juce::String text;
};

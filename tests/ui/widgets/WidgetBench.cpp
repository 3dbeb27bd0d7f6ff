#include "WidgetBench.h"

RepaintCount& RepaintCount::of (juce::Component& component)
{
    auto* counter = new RepaintCount (component);
    component.setCachedComponentImage (counter); // which repaints
    counter->take();
    return *counter;
}

bool RepaintCount::invalidateAll()
{
    return invalidate (component.getLocalBounds());
}

bool RepaintCount::invalidate (const juce::Rectangle<int>& area)
{
    ++count;
    lastArea = area;
    return true;
}

int RepaintCount::take()
{
    return std::exchange (count, 0);
}

juce::Image colourStrip (const std::vector<juce::Colour>& colours, int width, int height)
{
    juce::Image image (juce::Image::ARGB, width, height * static_cast<int> (colours.size()), true);
    for (int i = 0; i < static_cast<int> (colours.size()); ++i)
        image.clear ({ 0, i * height, width, height }, colours[static_cast<size_t> (i)]);
    return image;
}

juce::Image paintedAt (juce::Component& component, float scale)
{
    return component.createComponentSnapshot (component.getLocalBounds(), true, scale);
}

juce::Colour centreOf (juce::Component& component)
{
    return paintedAt (component, 1.0f).getPixelAt (component.getWidth() / 2, component.getHeight() / 2);
}

juce::MouseEvent mouse (juce::Component& component, juce::Point<float> now, juce::Point<float> pressedAt,
                        juce::ModifierKeys modifiers, int clicks)
{
    const auto time = juce::Time::getCurrentTime();
    using Source = juce::MouseInputSource;
    return { juce::Desktop::getInstance().getMainMouseSource(),
             now,
             modifiers,
             Source::defaultPressure,
             Source::defaultOrientation,
             Source::defaultRotation,
             Source::defaultTiltX,
             Source::defaultTiltY,
             &component,
             &component,
             time,
             pressedAt,
             time,
             clicks,
             now != pressedAt };
}

void drag (juce::Component& component, juce::Point<float> from, juce::Point<float> to,
           juce::ModifierKeys modifiers)
{
    component.mouseDown (mouse (component, from, from, modifiers));
    component.mouseDrag (mouse (component, to, from, modifiers));
    component.mouseUp (mouse (component, to, from, modifiers));
}

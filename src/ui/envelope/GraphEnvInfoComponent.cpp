#include "ui/envelope/GraphEnvInfoComponent.h"

#include "skin/Palette.h"
#include "ui/look/SMLookAndFeel.h"

namespace
{
constexpr int away = 12; // from the pointer
}

GraphEnvInfoComponent::GraphEnvInfoComponent()
{
    setSize (width, height);
    setInterceptsMouseClicks (false, false);
}

void GraphEnvInfoComponent::show (const juce::String& upper, const juce::String& lower,
                                  juce::Point<int> beside)
{
    upperLine = upper;
    lowerLine = lower;
    if (const auto* parent = getParentComponent())
    {
        const auto room = parent->getLocalBounds();
        juce::Rectangle<int> place (beside.x + away, beside.y - away - height, width, height);
        if (place.getRight() > room.getRight())
            place.setX (beside.x - away - width);
        if (place.getY() < room.getY())
            place.setY (beside.y + away);
        setBounds (place.constrainedWithin (room));
    }
    setVisible (true);
    repaint();
}

void GraphEnvInfoComponent::paint (juce::Graphics& g)
{
    g.setColour (palette::line);
    g.fillRoundedRectangle (getLocalBounds().toFloat(), 2.0f);
    auto area = getLocalBounds().reduced (2, 1);
    g.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
    g.setColour (palette::accent);
    g.drawFittedText (upperLine, area.removeFromTop (area.getHeight() / 2), juce::Justification::centred, 1,
                      0.7f);
    g.setFont (SMLookAndFeel::labelFont());
    g.setColour (palette::value);
    g.drawFittedText (lowerLine, area, juce::Justification::centred, 1, 0.7f);
}

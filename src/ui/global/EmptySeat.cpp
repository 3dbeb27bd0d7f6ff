#include "ui/global/EmptySeat.h"

#include "skin/Palette.h"
#include "ui/panel/PanelPaint.h"

void EmptySeat::paint (juce::Graphics& g)
{
    g.setFont (SMLookAndFeel::font (SMLookAndFeel::titleSize));
    g.setColour (palette::line);
    g.drawText (getName(), getLocalBounds(), juce::Justification::centred, false);
}

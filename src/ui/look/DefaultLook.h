#pragma once

#include "ui/look/SMLookAndFeel.h"

/** Makes the dark skin JUCE's default look for as long as somebody holds it, by a juce::SharedResourcePointer:
    JUCE asks the default look alone for typefaces, and several editors may live in one host. */
struct DefaultLook
{
    DefaultLook() { juce::LookAndFeel::setDefaultLookAndFeel (&look); }

    ~DefaultLook()
    {
        if (&juce::LookAndFeel::getDefaultLookAndFeel() == &look)
            juce::LookAndFeel::setDefaultLookAndFeel (nullptr);
    }

    SMLookAndFeel look;
};

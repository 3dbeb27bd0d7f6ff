#pragma once

#include "ui/browser/model/BrowserWorld.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** The selected song's picture, fitted into a square. Message thread. */
class CoverArtPreview : public juce::Component
{
public:
    explicit CoverArtPreview (BrowserWorld&);

    /** Shows the picture of a song's file; the former one stays until it is read. @param path   empty for none */
    void show (const juce::String& path);

    void paint (juce::Graphics&) override;

private:
    void find();

    BrowserWorld& world;
    juce::String path;
    juce::Image picture;
};

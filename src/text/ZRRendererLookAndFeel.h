#pragma once

#include "text/GlyphBlend.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** The look under ours: text of registered fonts is drawn sharp, in windows by itself. Message thread.

    JUCE asks the default look alone for typefaces, so this must be it. */
class ZRRendererLookAndFeel : public juce::LookAndFeel_V4
{
public:
    /** The registered font that stands for JUCE's default one; until it is registered, that one stays. */
    void setDefaultFontName (const juce::String& registeredName);

    /** For screens without coloured stripes, or with others. The default is `lcd`. Windows follow on
        their next paint. */
    void setTextPixels (GlyphBlend::Pixels toUse) { textPixels = toUse; }

    /** Sharp text for images in memory; JUCE's context for others. */
    std::unique_ptr<juce::LowLevelGraphicsContext>
    createGraphicsContext (const juce::Image&, juce::Point<int> origin,
                           const juce::RectangleList<int>& initialClip) override;

    juce::Typeface::Ptr getTypefaceForFont (const juce::Font&) override;

private:
    juce::String defaultFontName;
    GlyphBlend::Pixels textPixels = GlyphBlend::Pixels::lcd;
};

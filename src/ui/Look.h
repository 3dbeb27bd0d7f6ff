#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** Colours, type and the pictures of the toolkit's own controls: a desk for dark rooms. */
class Look : public juce::LookAndFeel_V4
{
public:
    Look();

    // Grounds, from behind to in front.
    static inline const juce::Colour ground { 0xff16181a }, panel { 0xff1c1e21 }, row { 0xff212326 },
        well { 0xff2b2e32 }, line { 0xff43464a };

    static inline const juce::Colour label { 0xffa0a1a3 }, value { 0xffe4e6e8 }, dark { 0xff101214 };

    static inline const juce::Colour focus { 0xffbeefff };    ///< focus, and a value that is being changed
    static inline const juce::Colour selected { 0xffafc81c }; ///< selected, learnt
    static inline const juce::Colour danger { 0xffcd3700 };   ///< recording, clipping; a ground, not for text

    /** The hue of a deck, 0 to 3. It marks what that deck does, and nothing else. */
    static juce::Colour deckHue (int deck) noexcept;

    static constexpr float labelSize = 11.0f, valueSize = 13.0f, titleSize = 16.0f, figureSize = 22.0f;

    /** The one bold sans. @param size   in pixels from top to bottom of a line */
    static juce::Font font (float size);

    /** The same in capitals' dress: 11 px with a little tracking. */
    static juce::Font labelFont();

    /** Fills a panel and lays the light from above on it: a lighter line on top, a darker one below. */
    static void fillRaised (juce::Graphics&, juce::Rectangle<int>, juce::Colour);

    juce::Font getTextButtonFont (juce::TextButton&, int height) override;
    juce::Font getLabelFont (juce::Label&) override;
    juce::Font getComboBoxFont (juce::ComboBox&) override;
    juce::Font getPopupMenuFont() override;
    juce::Font getAlertWindowTitleFont() override;
    juce::Font getAlertWindowMessageFont() override;
    juce::Font getAlertWindowFont() override;
    void drawButtonBackground (juce::Graphics&, juce::Button&, const juce::Colour&, bool over,
                               bool down) override;
    void drawButtonText (juce::Graphics&, juce::TextButton&, bool over, bool down) override;
    void drawLinearSlider (juce::Graphics&, int x, int y, int width, int height, float sliderPos,
                           float minSliderPos, float maxSliderPos, juce::Slider::SliderStyle,
                           juce::Slider&) override;
    void drawRotarySlider (juce::Graphics&, int x, int y, int width, int height, float sliderPos,
                           float startAngle, float endAngle, juce::Slider&) override;
    int getSliderThumbRadius (juce::Slider&) override { return capLength / 2; }

private:
    static constexpr int capLength = 12, capWidth = 28, trackWidth = 4;
    static constexpr float smallKnob = 30.0f; ///< in pixels; below it ring and gap are thinner
};

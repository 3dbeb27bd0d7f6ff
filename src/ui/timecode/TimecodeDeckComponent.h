#pragma once

#include "support/language/Translate.h"
#include "timecode/deckmode/TimecodeDeck.h"
#include "ui/panel/ControlPanel.h"
#include "ui/timecode/TimecodeCalibrationScope.h"
#include "ui/widgets/PXImageRotarySlider.h"
#include "ui/widgets/PXTextButton.h"

/** The setup of one deck's control record: input, record, mode, gain, and how its signal looks. */
class TimecodeDeckComponent : public ControlPanel
{
public:
    static constexpr int width = 452, height = 204;

    TimecodeDeckComponent (CPlatterdex&, int deck);
    ~TimecodeDeckComponent() override;

    /** Puts the deck's settings back to their defaults. */
    void restoreDefaults();

    const juce::String& words() const noexcept { return shown.words; }

    void paint (juce::Graphics&) override;

private:
    /** A knob on a number of the settings. */
    struct Knob
    {
        PXImageRotarySlider* slider = nullptr;
        std::function<double()> read;
        std::function<juce::String (double)> text;
        juce::Rectangle<int> valueArea;
        juce::String shown;
    };

    void pollMoving() override;
    void pollCalm() override;
    void addBox (juce::ComboBox&, const char* name, const juce::String& tip, juce::Rectangle<int>);
    void addKnob (const char* name, const juce::String& tip, int column, juce::Range<double>, double rest,
                  std::function<double()> read, std::function<void (double)> write,
                  std::function<juce::String (double)> text);
    TimecodeDeck& timecode() const;
    DeckSetup& setup() const;

    const int deck;
    juce::ComboBox input, mode, brand;
    PXTextButton learn { tr ("Learn") }, invert { tr ("Invert Phase") }, found { tr ("Found") },
        latency { tr ("Measure latency") };
    TimecodeCalibrationScope scope;
    std::vector<Knob> knobs;
    int foundBrand = -1;

    struct Shown
    {
        juce::String words, quality, motion, latency;
        bool operator== (const Shown&) const = default;
    } shown;
};

#include "../UiBench.h"
#include "WidgetBench.h"
#include "engine/CommandTable.h"
#include "ui/look/ButtonSkin.h"
#include "ui/widgets/PXFxSlider.h"
#include "ui/widgets/PXImageLinearSlider.h"

#include <gtest/gtest.h>

namespace
{
using Style = juce::Slider::SliderStyle;

const juce::ModifierKeys left (juce::ModifierKeys::leftButtonModifier),
    shift (juce::ModifierKeys::leftButtonModifier | juce::ModifierKeys::shiftModifier);

void turnWheel (juce::Slider& slider, float x, float y, bool shifted = false, bool smooth = false,
                bool reversed = false)
{
    juce::MouseWheelDetails wheel { x, y, reversed, smooth, false };
    slider.mouseWheelMove (
        mouse (slider, { 1, 1 }, { 1, 1 },
               shifted ? juce::ModifierKeys::shiftModifier : juce::ModifierKeys::noModifiers),
        wheel);
}

int command (const char* constant)
{
    return CommandTable::numberOf (constant);
}
}

TEST (PXImageRotarySlider, TheFrameFollowsTheValue)
{
    struct Case
    {
        double proportion;
        int frames, frame;
    };
    for (const auto& c :
         { Case { 0.0, 97, 0 }, Case { 0.5, 97, 48 }, Case { 1.0, 97, 96 }, Case { 0.00520, 97, 0 },
           Case { 0.00521, 97, 1 }, Case { 0.99479, 97, 95 }, Case { 0.99480, 97, 96 }, Case { 1.5, 97, 96 },
           Case { -1.0, 97, 0 }, Case { 0.5, 4, 2 }, Case { 1.0, 1, 0 } })
        EXPECT_EQ (knobFrame (c.proportion, c.frames), c.frame) << c.proportion;

    const std::vector<juce::Colour> colours { juce::Colours::red, juce::Colours::green, juce::Colours::blue };
    PXImageRotarySlider knob;
    knob.setFilmStrip (colourStrip (colours, 20, 20), 3, 20);
    knob.setBounds (0, 0, 28, 28);
    knob.setRange (-12.0, 12.0);
    for (int i = 0; i < 3; ++i)
    {
        knob.setValue (-12.0 + 12.0 * i);
        EXPECT_EQ (centreOf (knob), colours[static_cast<size_t> (i)]);
    }
}

TEST (PXImageLinearSlider, TheThumbTravelsTheTrackLessItsOwnLength)
{
    const SkinPicture track (juce::Image (juce::Image::ARGB, 20, 96, true)),
        levelTrack (juce::Image (juce::Image::ARGB, 96, 20, true)),
        cap (juce::Image (juce::Image::ARGB, 12, 28, true)),
        levelCap (juce::Image (juce::Image::ARGB, 28, 12, true));
    using Track = PXImageLinearSlider::Track;

    struct Case
    {
        Style style;
        Track kind;
        double value;
        juce::Rectangle<int> thumb;
    };
    for (const auto& c : { Case { Style::LinearVertical, Track::asItIs, 0.0, { 5, 80, 12, 28 } },
                           Case { Style::LinearVertical, Track::asItIs, 1.0, { 5, 12, 12, 28 } },
                           Case { Style::LinearVertical, Track::stretched, 0.0, { 5, 92, 12, 28 } },
                           Case { Style::LinearVertical, Track::stretched, 0.5, { 5, 46, 12, 28 } },
                           Case { Style::LinearVertical, Track::stretched, 1.0, { 5, 0, 12, 28 } },
                           Case { Style::LinearHorizontal, Track::asItIs, 0.0, { 12, 5, 28, 12 } },
                           Case { Style::LinearHorizontal, Track::asItIs, 1.0, { 80, 5, 28, 12 } },
                           Case { Style::LinearHorizontal, Track::stretched, 1.0, { 92, 5, 28, 12 } } })
    {
        const auto upright = c.style == Style::LinearVertical;
        PXImageLinearSlider fader ("_fader", c.style);
        fader.setImages (upright ? track : levelTrack, upright ? cap : levelCap, c.kind);
        fader.setBounds (0, 0, upright ? 22 : 120, upright ? 120 : 22);
        fader.setValue (c.value);
        EXPECT_EQ (fader.thumbBounds(), c.thumb) << c.value << (upright ? " upright" : " level");
    }
}

TEST (PXSlider, DragsGoFromWhereTheValueIsAndShiftMakesThemFine)
{
    PXImageLinearSlider fader ("_fader");
    fader.setImages ({}, SkinPicture (juce::Image (juce::Image::ARGB, 12, 28, true)));
    fader.setBounds (0, 0, 22, 128);
    PXImageRotarySlider knob;
    knob.setBounds (0, 0, 28, 28);

    struct Case
    {
        PXSlider& slider;
        juce::Point<float> by;
        juce::ModifierKeys with;
        double expected;
    };
    for (const auto& c : { Case { fader, { 0, -25 }, left, 0.75 }, Case { fader, { 0, -25 }, shift, 0.525 },
                           Case { fader, { 30, 10 }, left, 0.4 }, Case { fader, { 0, -900 }, left, 1.0 },
                           Case { knob, { 0, -15 }, left, 0.6 }, Case { knob, { 15, 0 }, left, 0.6 },
                           Case { knob, { -15, 15 }, shift, 0.48 }, Case { knob, { 0, 900 }, left, 0.0 } })
    {
        c.slider.setValue (0.5);
        drag (c.slider, { 2, 2 }, juce::Point<float> (2, 2) + c.by, c.with);
        EXPECT_NEAR (c.slider.getValue(), c.expected, 1.0e-6) << c.by.x << " " << c.by.y;
        EXPECT_FALSE (c.slider.isBeingChanged());
    }
}

TEST (PXSlider, TheWheelGoesInStepsThatShiftMakesFine)
{
    struct Case
    {
        float x, y;
        bool shifted, smooth, reversed;
        double expected;
    };
    for (const auto& c :
         { Case { 0, 0.2f, false, false, false, 0.52 }, Case { 0, -0.9f, false, false, false, 0.48 },
           Case { 0, 0.2f, true, false, false, 0.502 }, Case { -0.2f, 0, true, false, false, 0.502 },
           Case { 0, 0.1f, false, true, false, 0.51 }, Case { 0, 0.2f, false, false, true, 0.48 } })
    {
        PXImageRotarySlider knob;
        knob.setValue (0.5);
        turnWheel (knob, c.x, c.y, c.shifted, c.smooth, c.reversed);
        EXPECT_NEAR (knob.getValue(), c.expected, 1.0e-6) << c.x << " " << c.y;
        EXPECT_TRUE (knob.isBeingChanged());
        knob.setEnabled (false);
        turnWheel (knob, c.x, c.y);
        EXPECT_NEAR (knob.getValue(), c.expected, 1.0e-6) << "disabled";
    }
    PXImageRotarySlider stepped;
    stepped.setRange (0.0, 4.0, 1.0);
    turnWheel (stepped, 0.0f, 0.2f, true);
    EXPECT_EQ (stepped.getValue(), 1.0) << "not less than one of its own steps";
}

TEST (PXSlider, ACommandsDefaultIsWhereADoubleClickTakesIt)
{
    UiBench bench;
    struct Case
    {
        const char* constant;
        double rest;
    };
    for (const auto& c :
         { Case { "GAIN_A", 0.5 }, Case { "EQ_LOW_D", 0.5 }, Case { "FILTER_B", 0.5 },
           Case { "VOLUME_C", 1.0 }, Case { "PITCH_B", 0.5 }, Case { "CROSSFADER", 0.5 },
           Case { "MONITOR_MIX", 0.0 }, Case { "MASTER_VOLUME", 1.0 }, Case { "FX_DRY_WET_GROUP_A", 0.0 } })
    {
        PXImageRotarySlider knob;
        knob.bind (bench.engine, command (c.constant));
        knob.setValue (0.3);
        EXPECT_NEAR (knob.command().value(), 0.3, 1.0e-5) << c.constant;
        EXPECT_TRUE (knob.getTooltip().endsWith (". Double click to reset."));
        knob.mouseDoubleClick (mouse (knob, { 1, 1 }, { 1, 1 }, left, 2));
        EXPECT_NEAR (knob.command().value(), c.rest, 1.0e-5) << c.constant;
        EXPECT_NEAR (knob.getValue(), c.rest, 1.0e-5) << c.constant;
    }
    // As it was before anybody touched it, as well.
    UiBench fresh;
    for (const auto* constant :
         { "GAIN_A", "EQ_LOW_D", "FILTER_B", "VOLUME_C", "PITCH_B", "KEY_TUNING_A", "BALANCE_A", "CROSSFADER",
           "CROSSFADER_CURVE", "MONITOR_MIX", "MONITOR_VOLUME", "MASTER_VOLUME" })
    {
        const CommandBinding binding (fresh.engine, command (constant));
        EXPECT_NEAR (binding.value(), binding.restValue(), 1.0e-6) << constant;
    }
}

TEST (PXSlider, FollowsTheEngineUnlessAHandIsOnIt)
{
    UiBench bench;
    PXImageRotarySlider gain;
    gain.setVisible (true);
    gain.setBounds (0, 0, 28, 28);
    gain.bind (bench.engine, command ("GAIN_A"));
    auto& repaints = RepaintCount::of (gain);

    gain.poll();
    EXPECT_EQ (repaints.take(), 0);
    bench.engine.setParameter (gain.commandNumber(), 0.25f);
    gain.poll();
    EXPECT_EQ (gain.getValue(), 0.25);
    EXPECT_EQ (repaints.take(), 1);

    gain.mouseDown (mouse (gain, { 1, 1 }, { 1, 1 }));
    EXPECT_TRUE (gain.isBeingChanged());
    bench.engine.setParameter (gain.commandNumber(), 0.75f);
    gain.poll();
    EXPECT_EQ (gain.getValue(), 0.25);
    gain.mouseUp (mouse (gain, { 1, 1 }, { 1, 1 }));
    gain.poll();
    EXPECT_EQ (gain.getValue(), 0.75);
    EXPECT_EQ (bench.engine.getParameter (gain.commandNumber()), 0.75f) << "following writes nothing";
}

TEST (PXSlider, TakesTypedValuesInTheWordsThatItShows)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 0);
    auto& deck = *bench.engine.decks.deck (0);
    deck.marks.fixedGrid = 1;
    deck.marks.bpm = 120.0;
    bench.engine.decks.setPitchRange (3); // 8 % up and down
    const DeckWatch watch (bench.engine, 0);
    watch.look();

    juce::Component window;
    window.setSize (200, 100);
    PXImageRotarySlider knob;
    window.addAndMakeVisible (knob);
    knob.setBounds (0, 0, 28, 28);

    struct Case
    {
        ValueWords words;
        const char *shown, *typed;
        double expected;
    };
    const Case cases[] {
        { ValueWords::share(), "50.0 %", "75", 0.75 },
        { ValueWords::share(), "50.0 %", "12,5 %", 0.125 },
        { ValueWords::share(), "50.0 %", "900 %", 1.0 },
        { ValueWords::decibels(), "+0.0 dB", "-6.02", 0.25 },
        { ValueWords::decibels(), "+0.0 dB", "+3 dB", 0.7063 },
        { ValueWords::decibels(), "+0.0 dB", "-inf", 0.0 },
        { ValueWords::semitones(), "+0.00 st", "-3", 0.375 },
        { ValueWords::pitch (watch), "+0.00 %", "4", 0.25 },
        { ValueWords::pitch (watch), "+0.00 %", "-2.00 %", 0.625 },
        { ValueWords::pitch (watch), "+0.00 %", "126", 0.1875 },
        { ValueWords::pitch (watch), "+0.00 %", "117.6 bpm", 0.625 },
        { ValueWords::pitch (watch), "+0.00 %", "180", 0.0 },
    };
    for (const auto& c : cases)
    {
        knob.setWords (c.words);
        knob.setValue (0.5);
        knob.enterValue();
        auto* field = dynamic_cast<juce::TextEditor*> (window.findChildWithID ("_valueEntry"));
        ASSERT_NE (field, nullptr);
        EXPECT_TRUE (window.getLocalBounds().contains (field->getBounds()));
        EXPECT_TRUE (field->isCurrentlyModal()) << "what is typed goes nowhere else";
        EXPECT_EQ (field->getText(), c.shown);
        field->setText (c.typed, false);
        field->onReturnKey();
        EXPECT_NEAR (knob.getValue(), c.expected, 1.0e-4) << c.typed;
        EXPECT_FALSE (field->isVisible());
    }
    // A text without a number is not dropped in silence: the field stays and says what it takes.
    knob.setWords (ValueWords::pitch (watch));
    knob.enterValue();
    auto* field = dynamic_cast<juce::TextEditor*> (window.findChildWithID ("_valueEntry"));
    ASSERT_NE (field, nullptr);
    for (const auto* typed : { "abc", "" })
    {
        const auto before = knob.getValue();
        field->setText (typed, false);
        field->onReturnKey();
        EXPECT_EQ (knob.getValue(), before);
        EXPECT_TRUE (field->isVisible());
        EXPECT_TRUE (field->isEmpty());
    }
    field->onEscapeKey();
    EXPECT_FALSE (field->isVisible());
}

TEST (PXFxSlider, SaysWhatTheSlotsEffectSays)
{
    const DarkLook dark;
    UiBench bench;
    PXFxSlider knob;
    knob.setKnob (28, false);
    knob.setBounds (0, 0, 48, 60);
    knob.bindSlot (bench.engine, 1, 2);
    EXPECT_EQ (knob.commandNumber(), command ("EFFECT_PARAM_3_GROUP_B"));
    EXPECT_EQ (knob.effectName(), bench.engine.displayText (command ("EFFECT_SELECT_3_GROUP_B")));
    EXPECT_EQ (knob.effectName(), "Delay");

    const auto before = knob.valueText();
    drag (knob, { 20, 20 }, { 20, -70 });
    knob.poll();
    EXPECT_NE (knob.valueText(), before);
    EXPECT_EQ (knob.valueText(), bench.engine.displayText (knob.commandNumber()));
    bench.engine.setParameter (command ("EFFECT_SELECT_3_GROUP_B"),
                               static_cast<float> (FxType::selectorValue (0)));
    knob.poll();
    EXPECT_EQ (knob.effectName(), juce::String (FxType::name (0)));
}

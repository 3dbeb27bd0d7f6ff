#pragma once

#include "ui/command/CommandWidget.h"
#include "ui/look/ValueBubble.h"
#include "ui/widgets/ValueEntry.h"
#include "ui/widgets/ValueWords.h"

#include <functional>
#include <memory>

/** The hand on knobs and faders of pictures.

    A drag moves the value from where it is; held shift makes it ten times finer, as it does the wheel. A double click
    resets to the default. The right button opens a small menu with the reset and the entry of a value. While a hand is
    on it a slider doesn't follow the engine, and its name and number stand beside it. */
class PXSlider : public juce::Slider, public CommandWidget
{
public:
    /** @param name   with its underscore, "_gainSlider" */
    PXSlider (const juce::String& name, SliderStyle);
    ~PXSlider() override;

    void poll() override;

    /** The value that a double click returns to; a bound slider has its command's. */
    void setDefault (double value) { setDoubleClickReturnValue (true, value); }
    void resetToDefault();

    /** Lets the user type a value into a small field over the slider, which has the keyboard to itself. Return takes the
        value; escape, or a click anywhere else, puts the field away. */
    void enterValue();

    /** The words of the field: shares of the range without this. */
    void setWords (ValueWords other) { words = std::move (other); }

    /** The share of the range for a click of the wheel, in place of wheelStep and of its fine part. */
    std::function<double (bool isFine)> wheelStepOf;

    /** Adds to the right button's menu; ids from 100 on. */
    std::function<void (juce::PopupMenu&)> onFillMenu;
    std::function<void (int id)> onMenuChoice;

    /** True while its value is being changed: by a drag, and for a moment after the wheel. */
    bool isBeingChanged() const noexcept { return dragging != nullptr || wheelMoment.isTimerRunning(); }

    static constexpr double wheelStep = 0.02; ///< of the range, for a click of the wheel
    static constexpr double fine = 0.1;       ///< with shift
    static constexpr int wheelMomentMs = 400;

    void paint (juce::Graphics&) override = 0;
    void mouseDown (const juce::MouseEvent&) override;
    void mouseDrag (const juce::MouseEvent&) override;
    void mouseUp (const juce::MouseEvent&) override;
    void mouseDoubleClick (const juce::MouseEvent&) override;
    void mouseWheelMove (const juce::MouseEvent&, const juce::MouseWheelDetails&) override;
    bool keyPressed (const juce::KeyPress&) override;

protected:
    void bound() override;
    void valueChanged() override;
    void startedDragging() override { command().beginGesture(); }
    void stoppedDragging() override { command().endGesture(); }
    void enablementChanged() override;

    /** The way along its range that a movement of the mouse takes the value. @param moved   in pixels */
    virtual double proportionOf (juce::Point<float> moved) const = 0;

    /** The share of its range at a place, for a slider that snaps to the mouse; else never asked. */
    virtual double proportionAt (juce::Point<float>) const { return proportion(); }

    /** The name and the number that are shown while a hand changes the value. */
    virtual juce::String valueWords() const;

    /** The picture that fits: 0 as it is, 1 under the mouse, 2 while it is being changed. */
    int handState() const;

    /** The value's place in its range, 0 to 1. */
    double proportion() const;

private:
    class Moment : public juce::Timer
    {
    public:
        explicit Moment (PXSlider& s) : slider (s) {}
        void timerCallback() override;

    private:
        PXSlider& slider;
    };

    void moveTo (double newProportion);
    void turn (double clicks, bool isFine);
    void showMenu();

    std::unique_ptr<ScopedDragNotification> dragging;
    std::unique_ptr<ValueEntry> entry;
    std::unique_ptr<ValueBubble> bubble;
    Moment wheelMoment { *this };
    juce::Point<float> lastDrag;
    double dragProportion = 0.0;
    ValueWords words = ValueWords::share();
};

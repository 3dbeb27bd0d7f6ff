#include "ui/widgets/PXSlider.h"

#include <cmath>

namespace
{
constexpr float wheelClick =
    0.2f; ///< what a wheel without clicks has turned when another's would have clicked
constexpr int entryWidth = 64, entryHeight = 22;

enum MenuItem : int
{
    resetItem = 1,
    enterItem
};
}

/** The field for a typed value. It goes with any press outside, since nothing here would take the keyboard from it. */
class PXSlider::ValueEntry : public juce::TextEditor
{
public:
    ValueEntry()
    {
        setComponentID ("_valueEntry");
        setJustification (juce::Justification::centred);
        onEscapeKey = onFocusLost = [this] { setVisible (false); };
        juce::Desktop::getInstance().addGlobalMouseListener (&presses);
    }

    ~ValueEntry() override { juce::Desktop::getInstance().removeGlobalMouseListener (&presses); }

private:
    class Presses : public juce::MouseListener
    {
    public:
        explicit Presses (ValueEntry& e) : entry (e) {}

        void mouseDown (const juce::MouseEvent& event) override
        {
            if (event.eventComponent != &entry && !entry.isParentOf (event.eventComponent))
                entry.setVisible (false);
        }

    private:
        ValueEntry& entry;
    };

    Presses presses { *this };
};

PXSlider::PXSlider (const juce::String& name, SliderStyle style) : Slider (style, NoTextBox)
{
    setName (name);
    setRange (0.0, 1.0);
    setDefault (0.0);
    setSliderSnapsToMousePosition (false);
    setRepaintsOnMouseActivity (true);
    setWantsKeyboardFocus (false);
    setMouseClickGrabsKeyboardFocus (false);
}

PXSlider::~PXSlider() = default;

void PXSlider::bound()
{
    setDefault (command().restValue());
    textFromValueFunction = [this] (double) { return command().text(); };
    if (getTooltip() == command().name())
        setTooltip (command().name() + ". Double click to reset.");
}

void PXSlider::poll()
{
    if (command().isBound() && dragging == nullptr)
        setValue (command().value(), juce::dontSendNotification);
}

void PXSlider::valueChanged()
{
    command().set (getValue());
}

void PXSlider::resetToDefault()
{
    const ScopedDragNotification drag (*this);
    setValue (getDoubleClickReturnValue(), juce::sendNotificationSync);
}

double PXSlider::proportion() const
{
    // The toolkit's mapping asks for a slider that may be changed, and changes nothing.
    return const_cast<PXSlider*> (this)->valueToProportionOfLength (getValue());
}

void PXSlider::moveTo (double newProportion)
{
    setValue (proportionOfLengthToValue (juce::jlimit (0.0, 1.0, newProportion)), juce::sendNotificationSync);
}

int PXSlider::handState() const
{
    if (!isEnabled())
        return 0;
    return isBeingChanged() ? 2 : (isMouseOver (true) ? 1 : 0);
}

void PXSlider::mouseDown (const juce::MouseEvent& event)
{
    if (!isEnabled())
        return;
    if (event.mods.isPopupMenu())
        return showMenu();
    dragging = std::make_unique<ScopedDragNotification> (*this);
    lastDrag = event.position;
    if (getSliderSnapsToMousePosition())
        moveTo (proportionAt (event.position));
    dragProportion = proportion();
    repaint();
}

void PXSlider::mouseDrag (const juce::MouseEvent& event)
{
    if (dragging == nullptr)
        return;
    // What goes beyond an end is not remembered: turning back acts at once.
    dragProportion += proportionOf (event.position - lastDrag) * (event.mods.isShiftDown() ? fine : 1.0);
    dragProportion = juce::jlimit (0.0, 1.0, dragProportion);
    lastDrag = event.position;
    moveTo (dragProportion);
}

void PXSlider::mouseUp (const juce::MouseEvent&)
{
    dragging.reset();
    repaint();
}

void PXSlider::mouseDoubleClick (const juce::MouseEvent& event)
{
    if (isEnabled() && !event.mods.isPopupMenu())
        resetToDefault();
}

void PXSlider::mouseWheelMove (const juce::MouseEvent& event, const juce::MouseWheelDetails& wheel)
{
    if (!isEnabled() || !isScrollWheelEnabled())
        return Component::mouseWheelMove (event, wheel);

    // Some systems turn the wheel sideways while shift is held.
    const auto sideways = std::abs (wheel.deltaX) > std::abs (wheel.deltaY);
    const auto turned = (sideways ? -wheel.deltaX : wheel.deltaY) * (wheel.isReversed ? -1.0f : 1.0f);
    if (dragging != nullptr || juce::approximatelyEqual (turned, 0.0f))
        return;
    const auto clicks = wheel.isSmooth ? turned / wheelClick : (turned > 0.0f ? 1.0f : -1.0f);
    const auto step = juce::jmax (wheelStep * (event.mods.isShiftDown() ? fine : 1.0),
                                  getInterval() / (getMaximum() - getMinimum()));
    const ScopedDragNotification drag (*this);
    wheelMoment.startTimer (wheelMomentMs);
    moveTo (proportion() + step * static_cast<double> (clicks));
    repaint();
}

void PXSlider::enablementChanged()
{
    if (!isEnabled())
        dragging.reset();
    Slider::enablementChanged();
}

void PXSlider::Moment::timerCallback()
{
    stopTimer();
    slider.repaint();
}

void PXSlider::showMenu()
{
    juce::PopupMenu menu;
    menu.setLookAndFeel (&getLookAndFeel());
    menu.addItem (resetItem, juce::translate ("Reset"));
    menu.addItem (enterItem, juce::translate ("Enter value..."));
    if (onFillMenu)
    {
        menu.addSeparator();
        onFillMenu (menu);
    }
    menu.showMenuAsync (juce::PopupMenu::Options().withTargetComponent (this),
                        [self = SafePointer<PXSlider> (this)] (int chosen)
                        {
                            if (self == nullptr || chosen == 0)
                                return;
                            if (chosen == resetItem)
                                self->resetToDefault();
                            else if (chosen == enterItem)
                                self->enterValue();
                            else if (self->onMenuChoice)
                                self->onMenuChoice (chosen);
                        });
}

void PXSlider::enterValue()
{
    auto* window = getTopLevelComponent();
    if (window == nullptr || window == this)
        return;
    const auto place = window->getLocalArea (this, getLocalBounds())
                           .withSizeKeepingCentre (entryWidth, entryHeight)
                           .constrainedWithin (window->getLocalBounds());
    entry = std::make_unique<ValueEntry>();
    entry->setBounds (place);
    entry->setText (isTypedAsShare ({}) ? juce::String (100.0 * proportion(), 1) + "%"
                                        : getTextFromValue (getValue()),
                    false);
    entry->onReturnKey = [this] { takeEntry(); };
    window->addAndMakeVisible (*entry);
    entry->selectAll();
    entry->grabKeyboardFocus();
}

void PXSlider::takeEntry()
{
    const auto text = entry->getText();
    entry->setVisible (false); // it calls this, so it can't go yet
    if (!text.containsAnyOf ("0123456789"))
        return;
    const ScopedDragNotification drag (*this);
    setValue (getValueFromText (text), juce::sendNotificationSync);
}

bool PXSlider::isTypedAsShare (const juce::String& text) const
{
    return valueFromTextFunction == nullptr && (command().isBound() || text.trimEnd().endsWithChar ('%'));
}

double PXSlider::getValueFromText (const juce::String& typed)
{
    const auto text = typed.replaceCharacter (',', '.');
    if (isTypedAsShare (text))
        return proportionOfLengthToValue (juce::jlimit (0.0, 1.0, 0.01 * text.getDoubleValue()));
    return Slider::getValueFromText (text);
}

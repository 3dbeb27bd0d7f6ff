#include "ui/widgets/PXTooltipComponent.h"

namespace
{
/** The tooltip of what is under the mouse, or of what that is a part of. */
juce::String tipOf (const juce::Component* under, const juce::Component& end)
{
    for (auto* c = under; c != nullptr && c != &end; c = c->getParentComponent())
        if (auto* client = dynamic_cast<juce::TooltipClient*> (const_cast<juce::Component*> (c)))
            if (const auto tip = client->getTooltip(); tip.isNotEmpty())
                return juce::translate (tip);
    return {};
}
}

PXTooltipComponent::PXTooltipComponent (juce::Component& p, std::function<bool()> wanted)
    : parent (p),
      isWanted (std::move (wanted))
{
    setInterceptsMouseClicks (false, false);
    setAlwaysOnTop (true);
    parent.addChildComponent (*this);
    parent.addMouseListener (this, true);
}

PXTooltipComponent::~PXTooltipComponent()
{
    parent.removeMouseListener (this);
}

void PXTooltipComponent::followEvent (const juce::MouseEvent& event, bool pressed)
{
    if (event.source.isTouch())
        return;
    hovered = event.eventComponent;
    follow (hovered, event.getEventRelativeTo (&parent).getPosition(), pressed,
            juce::Time::getMillisecondCounter());
}

void PXTooltipComponent::mouseExit (const juce::MouseEvent& event)
{
    if (event.eventComponent != hovered)
        return; // it has entered another one already
    hovered = nullptr;
    follow (nullptr, lastPosition, false, juce::Time::getMillisecondCounter());
}

void PXTooltipComponent::timerCallback()
{
    stopTimer();
    follow (hovered, lastPosition, false, juce::Time::getMillisecondCounter());
}

void PXTooltipComponent::follow (juce::Component* under, juce::Point<int> position, bool pressed,
                                 juce::uint32 now)
{
    const auto tip = isWanted() ? tipOf (under, parent) : juce::String();
    const auto isNew = tip != resting;
    if (isNew || position.getDistanceFrom (lastPosition) > quickMove)
        restingSince = now;
    if (isNew)
        spent = false;
    spent = spent || pressed;
    resting = tip;
    lastPosition = position;

    if (resting.isEmpty() || spent)
        hide();
    else if (const auto rested = now - restingSince; isVisible() || rested >= juce::uint32 { delayMs })
        show (resting, position);
    else
        startTimer (delayMs - static_cast<int> (rested));
}

void PXTooltipComponent::show (const juce::String& text, juce::Point<int> position)
{
    if (shown != text)
    {
        shown = text;
        repaint();
    }
    setBounds (getLookAndFeel().getTooltipBounds (shown, position, parent.getLocalBounds()));
    setVisible (true);
}

void PXTooltipComponent::showOf (const juce::Component* control)
{
    const auto tip = control != nullptr && isWanted() ? tipOf (control, parent) : juce::String();
    if (tip.isEmpty())
        return hide();
    show (tip, parent.getLocalArea (control, control->getLocalBounds()).getBottomLeft());
}

void PXTooltipComponent::hide()
{
    stopTimer();
    setVisible (false);
    shown = {};
}

void PXTooltipComponent::paint (juce::Graphics& g)
{
    getLookAndFeel().drawTooltip (g, shown, getWidth(), getHeight());
}

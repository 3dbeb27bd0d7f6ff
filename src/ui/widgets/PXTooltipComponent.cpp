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
    startTimer (waitingMs);
}

PXTooltipComponent::~PXTooltipComponent()
{
    stopTimer();
}

void PXTooltipComponent::timerCallback()
{
    const auto mouse = juce::Desktop::getInstance().getMainMouseSource();
    auto* under = mouse.isTouch() ? nullptr : mouse.getComponentUnderMouse();
    if (under != nullptr && !parent.isParentOf (under))
        under = nullptr;
    follow (under, parent.getLocalPoint (nullptr, mouse.getScreenPosition()).roundToInt(),
            juce::ModifierKeys::currentModifiers.isAnyMouseButtonDown(), juce::Time::getMillisecondCounter());
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
    else if (isVisible() || now - restingSince >= static_cast<juce::uint32> (delayMs))
        show (resting, position);
}

void PXTooltipComponent::show (const juce::String& text, juce::Point<int> position)
{
    if (shown != text)
    {
        shown = text;
        repaint();
    }
    setBounds (getLookAndFeel().getTooltipBounds (shown, position, parent.getLocalBounds()));
    if (isVisible())
        return;
    setVisible (true);
    startTimer (shownMs);
}

void PXTooltipComponent::hide()
{
    if (!isVisible())
        return;
    setVisible (false);
    shown = {};
    startTimer (waitingMs);
}

void PXTooltipComponent::paint (juce::Graphics& g)
{
    getLookAndFeel().drawTooltip (g, shown, getWidth(), getHeight());
}

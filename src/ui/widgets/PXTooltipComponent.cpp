#include "ui/widgets/PXTooltipComponent.h"

#include "ui/command/CommandWidget.h"

#include <algorithm>
#include <limits>

juce::Rectangle<int> PXTooltipComponent::placeBeside (juce::Rectangle<int> wanted,
                                                      const juce::Array<juce::Rectangle<int>>& keptFree,
                                                      juce::Rectangle<int> room)
{
    const auto isFree = [&] (juce::Rectangle<int> place)
    {
        return room.contains (place)
               && std::none_of (keptFree.begin(), keptFree.end(),
                                [&] (const auto& area) { return area.intersects (place); });
    };
    if (isFree (wanted))
        return wanted;
    juce::Rectangle<int> best;
    auto nearest = std::numeric_limits<int>::max();
    for (const auto& area : keptFree)
        for (const auto& place :
             { wanted.withY (area.getY() - wanted.getHeight()), wanted.withY (area.getBottom()),
               wanted.withX (area.getX() - wanted.getWidth()), wanted.withX (area.getRight()) })
            if (const auto way = place.getPosition().getDistanceFrom (wanted.getPosition());
                way < nearest && isFree (place))
            {
                nearest = way;
                best = place;
            }
    return best;
}

/** The tooltip of what is under the mouse, or of what that is a part of, and what is said of its command. */
juce::String PXTooltipComponent::tipUnder (const juce::Component* under) const
{
    for (auto* c = under; c != nullptr && c != &parent; c = c->getParentComponent())
        if (auto* client = dynamic_cast<juce::TooltipClient*> (const_cast<juce::Component*> (c)))
            if (const auto tip = client->getTooltip(); tip.isNotEmpty())
            {
                const auto* widget = dynamic_cast<const CommandWidget*> (c);
                const auto words = widget != nullptr && widget->commandNumber() > 0 && wordsOf != nullptr
                                       ? wordsOf (widget->commandNumber())
                                       : juce::String();
                return juce::translate (tip) + (words.isEmpty() ? words : "\n" + words);
            }
    return {};
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
    const auto isCovered = juce::Component::getNumCurrentlyModalComponents() > 0; // by a menu
    const auto tip = isWanted() && !isCovered ? tipUnder (under) : juce::String();
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
    const auto room = parent.getLocalBounds();
    const auto place =
        placeBeside (getLookAndFeel().getTooltipBounds (shown, position, room),
                     keptFree != nullptr ? keptFree() : juce::Array<juce::Rectangle<int>>(), room);
    setBounds (place);
    setVisible (!place.isEmpty());
}

void PXTooltipComponent::showOf (const juce::Component* control)
{
    const auto tip = control != nullptr && isWanted() ? tipUnder (control) : juce::String();
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

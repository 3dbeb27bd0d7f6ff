#include "ui/command/CommandWidget.h"

void CommandWidget::bind (CPlatterdex& engine, int number)
{
    binding = { engine, number };
    if (auto* hinted = dynamic_cast<juce::SettableTooltipClient*> (this);
        hinted != nullptr && hinted->getTooltip().isEmpty())
        hinted->setTooltip (binding.name());
    if (auto* component = dynamic_cast<juce::Component*> (this))
        component->setTitle (binding.name());
    bound();
    poll();
}

juce::Rectangle<int> CommandWidget::hitArea (juce::Rectangle<int> picture) noexcept
{
    return picture.withSizeKeepingCentre (juce::jmax (smallestHit, picture.getWidth()),
                                          juce::jmax (smallestHit, picture.getHeight()));
}

void pollCommandWidgets (const juce::Component& parent)
{
    for (auto* child : parent.getChildren())
        if (auto* widget = dynamic_cast<CommandWidget*> (child))
            widget->poll();
}

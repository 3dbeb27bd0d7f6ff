#pragma once

#include "ui/manual/HelpTopic.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** The way from a control to the page of the manual that tells of it. Message thread. */
namespace HelpTopics
{
/** The topic of a component, or of the next one around it that has one: first by its command, then by its kind. The manual's first
    page for a component that nothing is known of. @param component   null for none */
HelpTopic of (const juce::Component* component);
}

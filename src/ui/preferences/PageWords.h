#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** The words by which a page of the preferences is found. */
namespace PageWords
{
/** The texts of a component and of all within it: captions, buttons, labels, tooltips. */
juce::String of (const juce::Component&);

/** True if every one of the words stands in the text, in whatever order and case. */
bool holds (const juce::String& text, const juce::String& words);

/** The smallest components within a page that have all of the words, in the page's coordinates. */
std::vector<juce::Rectangle<int>> find (juce::Component& page, const juce::String& words);
}

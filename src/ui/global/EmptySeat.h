#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** A page whose part of the system does not exist yet: its name, quietly. */
class EmptySeat : public juce::Component
{
public:
    explicit EmptySeat (const juce::String& name) : Component (name) {}

    void paint (juce::Graphics&) override;
};

// The pages to come, each with its own name in either mode.
class VstHost2DecksComponent : public EmptySeat
{
public:
    VstHost2DecksComponent() : EmptySeat ("VST") {}
};

class VstHost4DecksComponent : public EmptySeat
{
public:
    VstHost4DecksComponent() : EmptySeat ("VST") {}
};

#pragma once

#include "ui/widgets/SkinPicture.h"

/** A tab of the block between the decks. */
class PXTabBarButton : public juce::TabBarButton
{
public:
    PXTabBarButton (const juce::String& name, juce::TabbedButtonBar&);

    void paintButton (juce::Graphics&, bool over, bool down) override;
    int getBestTabLength (int depth) override;

private:
    SkinPicture picture;
};

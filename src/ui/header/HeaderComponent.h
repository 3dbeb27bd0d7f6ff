#pragma once

#include "ui/header/HeaderPanels.h"

/** The strip on top: name, buttons, the application's news, levels. */
class HeaderComponent : public juce::Component
{
public:
    HeaderComponent (CPlatterdex&, HeaderActions);

    /** One sentence on what goes on in the background; empty for nothing. */
    void setStatus (const juce::String&);

    HeaderButtons& buttonPanel() noexcept { return buttons; }

    void paint (juce::Graphics&) override;
    void resized() override;

private:
    juce::Rectangle<int> statusArea() const;

    HeaderButtons buttons;
    HeaderLevels levels;
    juce::String status;
};

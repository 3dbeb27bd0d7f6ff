#pragma once

#include "ui/header/HeaderNews.h"
#include "ui/header/HeaderPanels.h"

/** The strip on top: name, buttons, the application's news, levels. */
class HeaderComponent : public juce::Component
{
public:
    HeaderComponent (CPlatterdex&, HeaderActions);

    HeaderNews& newsLine() noexcept { return news; }
    HeaderButtons& buttonPanel() noexcept { return buttons; }

    void paint (juce::Graphics&) override;
    void resized() override;

private:
    HeaderButtons buttons;
    HeaderLevels levels;
    HeaderNews news;
};

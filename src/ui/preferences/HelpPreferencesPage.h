#pragma once

#include "ui/preferences/TextPage.h"
#include "ui/widgets/PXTextButton.h"

/** The page that gets a newcomer through the first mix, with the way to the manual. */
class HelpPreferencesPage : public TextPage
{
public:
    /** @param openManual   empty for no button */
    explicit HelpPreferencesPage (std::function<void()> openManual = {});

    void resized() override;

private:
    PXTextButton manualButton;
};

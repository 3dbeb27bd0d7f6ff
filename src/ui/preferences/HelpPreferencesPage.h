#pragma once

#include "ui/preferences/TextPage.h"

/** The page that gets a newcomer through the first mix. */
class HelpPreferencesPage : public TextPage
{
public:
    HelpPreferencesPage();
};

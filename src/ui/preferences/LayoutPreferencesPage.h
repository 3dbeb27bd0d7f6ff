#pragma once

#include "ui/header/HeaderActions.h"
#include "ui/preferences/SettingsPage.h"

/** The page of the window: its parts, their order, the browser's lists, size and tooltips. */
class LayoutPreferencesPage : public SettingsPage
{
public:
    LayoutPreferencesPage (CPlatterdex&, const HeaderActions&);
};

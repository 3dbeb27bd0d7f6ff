#pragma once

#include "ui/header/HeaderActions.h"
#include "ui/preferences/SettingsPage.h"

/** The page of what the whole desk obeys: playing, automix, mixer, the device and the decks' inputs. */
class GlobalSettingsPreferencesPage : public SettingsPage
{
public:
    GlobalSettingsPreferencesPage (CPlatterdex&, const HeaderActions&);

private:
    void addSimilarSongs (Session&);
};

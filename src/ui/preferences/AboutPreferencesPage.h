#pragma once

#include "ui/preferences/TextPage.h"

/** The page of the program's version, and of the libraries that it stands on with their licences. */
class AboutPreferencesPage : public TextPage
{
public:
    AboutPreferencesPage();
};

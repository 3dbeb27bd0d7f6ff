#pragma once

#include "ui/preferences/SettingsPage.h"

/** The page of the folders and files that the program reads and writes. */
class FileManagementPreferencesPage : public SettingsPage
{
public:
    explicit FileManagementPreferencesPage (CPlatterdex&);
};

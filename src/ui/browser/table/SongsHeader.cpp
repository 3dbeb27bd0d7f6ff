#include "ui/browser/table/SongsHeader.h"

#include "support/language/Translate.h"
#include "ui/browser/model/PointerMenu.h"
#include "ui/look/OpenMenu.h"

namespace
{
// Beyond the ids of columns, by which the other items are told apart.
constexpr int fitItem = 0x10000, fitAllItem = fitItem + 1;
}

void SongsHeader::addMenuItems (juce::PopupMenu& menu, int columnIdClicked)
{
    menu.addItem (fitItem, tr ("Fit Column Width"), columnIdClicked != 0);
    menu.addItem (fitAllItem, tr ("Fit All Column Widths"), getNumColumns (true) > 0);
    menu.addSeparator();
    TableHeaderComponent::addMenuItems (menu, columnIdClicked);
}

void SongsHeader::reactToMenuItem (int menuReturnId, int columnIdClicked)
{
    if (menuReturnId == fitItem)
        owner.autoSizeColumn (columnIdClicked);
    else if (menuReturnId == fitAllItem)
        owner.autoSizeAllColumns();
    else
        TableHeaderComponent::reactToMenuItem (menuReturnId, columnIdClicked);
}

void SongsHeader::showColumnChooserMenu (int columnIdClicked)
{
    juce::PopupMenu menu;
    addMenuItems (menu, columnIdClicked);
    openMenu (menu, *this, PointerMenu::options(),
              [this, columnIdClicked] (int chosen) { reactToMenuItem (chosen, columnIdClicked); });
}

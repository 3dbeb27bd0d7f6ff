#include "ui/widgets/MenuButton.h"

#include "skin/Palette.h"
#include "ui/look/ButtonSkin.h"
#include "ui/look/OpenMenu.h"
#include "ui/look/SMLookAndFeel.h"

MenuButton::MenuButton (const juce::String& text) : PXTextButton (text)
{
    setTriggeredOnMouseDown (true);
}

void MenuButton::clicked()
{
    PXTextButton::clicked();
    openMenu();
}

void MenuButton::openMenu()
{
    if (!onFillMenu)
        return;
    juce::PopupMenu menu;
    onFillMenu (menu);
    ::openMenu (menu, *this,
                juce::PopupMenu::Options().withTargetComponent (this).withMinimumWidth (getWidth()),
                onMenuChoice);
}

juce::Rectangle<int> MenuButton::textArea() const
{
    return PXTextButton::textArea().withTrimmedRight (arrowWidth);
}

void MenuButton::paintButton (juce::Graphics& g, bool over, bool down)
{
    PXTextButton::paintButton (g, over, down);
    SMLookAndFeel::drawArrow (g, getLocalBounds().reduced (4, 0).removeFromRight (arrowWidth),
                              !isEnabled()       ? textOfDisabled (getToggleState())
                              : getToggleState() ? palette::ink
                                                 : palette::label);
}

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** The header of a table of songs. Its menu shows and hides columns, and gives them the widths of their texts. Message thread. */
class SongsHeader : public juce::TableHeaderComponent
{
public:
    /** @param table   which owns the header */
    explicit SongsHeader (juce::TableListBox& table) : owner (table) {}

    void addMenuItems (juce::PopupMenu&, int columnIdClicked) override;
    void reactToMenuItem (int menuReturnId, int columnIdClicked) override;
    void showColumnChooserMenu (int columnIdClicked) override;

private:
    juce::TableListBox& owner;
};

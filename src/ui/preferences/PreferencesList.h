#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

/** The list of the pages, left in the preferences. Message thread. */
class PreferencesList : public juce::Component, private juce::ListBoxModel
{
public:
    static constexpr int width = 196;

    PreferencesList();

    std::function<void (int page)> onSelect;

    /** Shows some pages' texts. @param pages   indices among all texts, in order */
    void show (const juce::StringArray& texts, std::vector<int> pages);

    /** Selects a page; nothing happens if it isn't shown. */
    void select (int page);

    void takeFocus() { list.grabKeyboardFocus(); }
    void resized() override { list.setBounds (getLocalBounds()); }

private:
    int getNumRows() override { return static_cast<int> (pages.size()); }
    void paintListBoxItem (int row, juce::Graphics&, int rowWidth, int rowHeight, bool selected) override;
    void selectedRowsChanged (int row) override;
    juce::String getNameForRow (int row) override;

    juce::StringArray texts;
    std::vector<int> pages;
    juce::ListBox list { {}, this };
};

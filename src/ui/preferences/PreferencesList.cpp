#include "ui/preferences/PreferencesList.h"

#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/panel/PanelPaint.h"

namespace
{
constexpr int rowHeight = 26, inset = 10;
}

PreferencesList::PreferencesList()
{
    list.setRowHeight (rowHeight);
    list.setTitle (tr ("Pages of the preferences"));
    addAndMakeVisible (list);
}

void PreferencesList::show (const juce::StringArray& t, std::vector<int> p)
{
    if (t == texts && p == pages)
        return;
    texts = t;
    pages = std::move (p);
    list.updateContent();
    list.repaint();
}

void PreferencesList::select (int page)
{
    if (const auto found = std::find (pages.begin(), pages.end(), page); found != pages.end())
        list.selectRow (static_cast<int> (found - pages.begin()));
}

void PreferencesList::paintListBoxItem (int row, juce::Graphics& g, int rowWidth, int height, bool selected)
{
    const juce::Rectangle<int> area (rowWidth, height);
    SMLookAndFeel::fillRow (g, area, row, selected);
    PanelPaint::value (g, getNameForRow (row), area.reduced (inset, 0), juce::Justification::centredLeft);
}

void PreferencesList::selectedRowsChanged (int row)
{
    if (row >= 0 && row < getNumRows() && onSelect != nullptr)
        onSelect (pages[static_cast<size_t> (row)]);
}

juce::String PreferencesList::getNameForRow (int row)
{
    return row >= 0 && row < getNumRows() ? texts[pages[static_cast<size_t> (row)]] : juce::String();
}

#include "ui/preferences/RowGroupsPage.h"

#include "skin/Palette.h"
#include "ui/panel/PanelPaint.h"

namespace
{
constexpr int margin = 12, titleHeight = 26, groupGap = 12, inset = 12, footHeight = 6;
}

void RowGroupsPage::addGroup (const juce::String& title)
{
    groups.push_back ({ title, {}, {} });
}

void RowGroupsPage::addRow (std::unique_ptr<SettingRow> row)
{
    addAndMakeVisible (*row);
    groups.back().rows.push_back (std::move (row));
}

int RowGroupsPage::neededHeight() const
{
    auto rows = 0;
    for (const auto& group : groups)
        rows += static_cast<int> (group.rows.size());
    const auto count = static_cast<int> (groups.size());
    return 2 * margin + rows * SettingRow::height + count * (titleHeight + footHeight + groupGap) - groupGap;
}

void RowGroupsPage::pollCalm()
{
    for (auto& group : groups)
        for (auto& row : group.rows)
            row->refresh();
}

void RowGroupsPage::paint (juce::Graphics& g)
{
    g.fillAll (palette::ground);
    for (const auto& group : groups)
    {
        SMLookAndFeel::fillRaised (g, group.area, palette::panel);
        PanelPaint::value (g, group.title, group.area.withHeight (titleHeight).withTrimmedLeft (inset),
                           juce::Justification::centredLeft, SMLookAndFeel::titleSize);
    }
}

void RowGroupsPage::resized()
{
    auto area = getLocalBounds().reduced (margin);
    for (auto& group : groups)
    {
        const auto height =
            titleHeight + static_cast<int> (group.rows.size()) * SettingRow::height + footHeight;
        group.area = area.removeFromTop (height);
        area.removeFromTop (groupGap);
        auto inner = group.area.withTrimmedTop (titleHeight).reduced (inset, 0);
        for (auto& row : group.rows)
            row->setBounds (inner.removeFromTop (SettingRow::height));
    }
}

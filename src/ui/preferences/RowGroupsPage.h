#pragma once

#include "ui/poll/PollingView.h"
#include "ui/preferences/SettingRow.h"

#include <memory>
#include <vector>

/** A page of groups of rows, which are refreshed while the page shows. Message thread. */
class RowGroupsPage : public PollingView
{
public:
    static constexpr int width = 640;

    RowGroupsPage() : PollingView (Pace::calm) {}

    void paint (juce::Graphics&) override;
    void resized() override;

protected:
    /** Begins a group of rows. */
    void addGroup (const juce::String& title);

    /** Adds a row to the last group. */
    void addRow (std::unique_ptr<SettingRow>);

    /** Takes all groups away, for others. */
    void clearGroups() { groups.clear(); }

    /** The height that all rows need. */
    int neededHeight() const;

    /** Gives the page its height. */
    void finish() { setSize (width, neededHeight()); }

    void pollCalm() override;

private:
    struct Group
    {
        juce::String title;
        std::vector<std::unique_ptr<SettingRow>> rows;
        juce::Rectangle<int> area;
    };

    std::vector<Group> groups;
};

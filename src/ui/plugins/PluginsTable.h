#pragma once

#include "plugins/catalogue/KnownPlugins.h"
#include "ui/poll/PollingView.h"

/** The list of known plug-ins, those that failed too. A click on a header sorts by it. */
class PluginsTable : public PollingView, private juce::TableListBoxModel
{
public:
    explicit PluginsTable (std::shared_ptr<KnownPlugins>);
    ~PluginsTable() override;

    enum Column
    {
        name = 1,
        format,
        verified,
        directory,
        manufacturer,
        kind,
        channels,
        latency
    };

    /** The text of a cell. */
    static juce::String textOf (const KnownPluginEntry&, int column);

    void resized() override;

private:
    void pollCalm() override;
    void sort();

    int getNumRows() override { return static_cast<int> (rows.size()); }
    void paintRowBackground (juce::Graphics&, int row, int width, int height, bool selected) override;
    void paintCell (juce::Graphics&, int row, int column, int width, int height, bool selected) override;
    void sortOrderChanged (int column, bool forwards) override;
    juce::String getCellTooltip (int row, int column) override;
    void deleteKeyPressed (int lastRow) override;

    const std::shared_ptr<KnownPlugins> known;
    std::vector<KnownPluginEntry> rows;
    juce::TableListBox table;
    int sortColumn = name;
    bool isForwards = true;
    uint32_t shown = ~0u;
};

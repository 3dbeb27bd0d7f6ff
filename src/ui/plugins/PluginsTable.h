#pragma once

#include "plugins/catalogue/KnownPlugins.h"
#include "ui/poll/PollingView.h"

/** The list of known plug-ins, those that failed too, and a line on the chosen one, which says why it failed. A click on a
    header sorts by it; Delete has the chosen one scanned again. */
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

    void paint (juce::Graphics&) override;
    void resized() override;

private:
    void pollCalm() override;
    void sort();
    juce::String note() const;

    int getNumRows() override { return static_cast<int> (rows.size()); }
    void paintRowBackground (juce::Graphics&, int row, int width, int height, bool selected) override;
    void paintCell (juce::Graphics&, int row, int column, int width, int height, bool selected) override;
    void sortOrderChanged (int column, bool forwards) override;
    juce::String getCellTooltip (int row, int column) override;
    void deleteKeyPressed (int lastRow) override;
    void selectedRowsChanged (int) override { repaint (noteArea); }

    const std::shared_ptr<KnownPlugins> known;
    std::vector<KnownPluginEntry> rows;
    juce::TableListBox table;
    juce::Rectangle<int> noteArea;
    int sortColumn = name;
    bool isForwards = true;
    uint32_t shown = ~0u;
};

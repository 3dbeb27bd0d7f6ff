#include "ui/plugins/PluginsTable.h"

#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/look/SMLookAndFeel.h"
#include "ui/panel/PanelPaint.h"

#include <algorithm>

namespace
{
constexpr int rowHeight = 20, headerHeight = 24, noteHeight = 22, margin = 4;

struct ColumnSpec
{
    const char* title;
    int id;
    int width;
};

constexpr ColumnSpec columns[] {
    { N_ ("Name"), PluginsTable::name, 170 },
    { N_ ("Format"), PluginsTable::format, 56 },
    { N_ ("Verified"), PluginsTable::verified, 70 },
    { N_ ("Directory"), PluginsTable::directory, 150 },
    { N_ ("Manufacturer"), PluginsTable::manufacturer, 110 },
    { N_ ("Instrument/FX"), PluginsTable::kind, 92 },
    { N_ ("Inputs/Outputs"), PluginsTable::channels, 96 },
    { N_ ("Latency"), PluginsTable::latency, 60 },
};
}

PluginsTable::PluginsTable (std::shared_ptr<KnownPlugins> k)
    : PollingView (Pace::calm),
      known (std::move (k)),
      table ({}, this)
{
    table.setColour (juce::ListBox::backgroundColourId, palette::ground);
    table.setRowHeight (rowHeight);
    table.setTitle (tr ("Plug-ins"));
    auto& header = table.getHeader();
    constexpr auto flags = juce::TableHeaderComponent::visible | juce::TableHeaderComponent::resizable
                           | juce::TableHeaderComponent::sortable;
    for (const auto& column : columns)
        header.addColumn (tr (column.title), column.id, column.width, 40, -1, flags);
    header.setPopupMenuActive (false);
    header.setStretchToFitActive (true);
    header.setSortColumnId (name, true);
    table.setHeaderHeight (headerHeight);
    addAndMakeVisible (table);
    pollCalm();
}

PluginsTable::~PluginsTable()
{
    table.setModel (nullptr);
}

juce::String PluginsTable::textOf (const KnownPluginEntry& entry, int column)
{
    const auto& plugin = entry.description;
    switch (column)
    {
    case name:
        return plugin.name;
    case format:
        return plugin.pluginFormatName;
    case verified:
        return wordOf (entry.state);
    case directory:
        return entry.directory();
    case manufacturer:
        return plugin.manufacturerName;
    case kind:
        return !entry.isUsable() ? juce::String() : plugin.isInstrument ? tr ("Instrument") : tr ("FX");
    case channels:
        return !entry.isUsable()
                   ? juce::String()
                   : juce::String (plugin.numInputChannels) + "/" + juce::String (plugin.numOutputChannels);
    case latency:
        return entry.isUsable() ? juce::String (entry.latency) : juce::String();
    default:
        return {};
    }
}

void PluginsTable::pollCalm()
{
    if (const auto now = known->revision(); now != shown)
    {
        shown = now;
        rows = known->entries();
        sort();
    }
}

void PluginsTable::sort()
{
    std::stable_sort (rows.begin(), rows.end(),
                      [this] (const KnownPluginEntry& a, const KnownPluginEntry& b)
                      {
                          const auto order = textOf (a, sortColumn).compareNatural (textOf (b, sortColumn));
                          return isForwards ? order < 0 : order > 0;
                      });
    table.updateContent();
    repaint();
}

void PluginsTable::sortOrderChanged (int column, bool forwards)
{
    sortColumn = column;
    isForwards = forwards;
    sort();
}

void PluginsTable::paintRowBackground (juce::Graphics& g, int row, int, int, bool selected)
{
    g.fillAll (selected ? palette::line : row % 2 == 0 ? palette::ground : palette::raised);
}

void PluginsTable::paintCell (juce::Graphics& g, int row, int column, int width, int height, bool)
{
    if (row >= getNumRows())
        return;
    const auto& entry = rows[static_cast<size_t> (row)];
    g.setColour (column == name && entry.isUsable() ? palette::value : palette::label);
    g.setFont (juce::Font (13.0f));
    g.drawText (textOf (entry, column), margin, 0, width - 2 * margin, height,
                juce::Justification::centredLeft);
}

juce::String PluginsTable::getCellTooltip (int row, int)
{
    return row >= 0 && row < getNumRows() ? rows[static_cast<size_t> (row)].file : juce::String();
}

void PluginsTable::deleteKeyPressed (int row)
{
    if (row < 0 || row >= getNumRows())
        return;
    known->remove (juce::String (rows[static_cast<size_t> (row)].file));
    juce::ignoreUnused (known->save()); // at the next scan again
    pollCalm();
}

juce::String PluginsTable::note() const
{
    if (const auto row = table.getSelectedRow(); row >= 0 && row < static_cast<int> (rows.size()))
    {
        const auto& entry = rows[static_cast<size_t> (row)];
        if (!entry.isUsable() && entry.fileTime == KnownPluginEntry::notScanned)
            return entry.description.name + ": " + tr (entry.reason);
        return entry.isUsable() ? entry.file
                                : tr ("%1: %2 It is left out of scans until you press Delete.",
                                      entry.description.name, tr (entry.reason));
    }
    const auto failed = std::count_if (rows.begin(), rows.end(),
                                       [] (const KnownPluginEntry& entry) { return !entry.isUsable(); });
    if (failed == 0)
        return {};
    return tr ("%1 of %2 can't be played: click one to read why.", failed, rows.size());
}

void PluginsTable::paint (juce::Graphics& g)
{
    PanelPaint::value (g, note(), noteArea.reduced (margin, 0), juce::Justification::centredLeft);
}

void PluginsTable::resized()
{
    auto area = getLocalBounds();
    noteArea = area.removeFromBottom (noteHeight);
    table.setBounds (area);
}

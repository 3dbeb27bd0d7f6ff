#include "ui/envelope/EnvelopesTable.h"

#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/look/SMLookAndFeel.h"

namespace
{
constexpr int checkWidth = 56, headerHeight = 24, swatch = 10;
constexpr const char* visibleTip = N_ ("Indicates envelope visibility.");
constexpr const char* enabledTip = N_ ("Enable/Disable the parameter envelope.");
}

CheckColumnCustomComponent::CheckColumnCustomComponent()
{
    setInterceptsMouseClicks (false, true);
    addAndMakeVisible (tick);
}

void CheckColumnCustomComponent::set (const juce::String& name, const juce::String& tooltip, bool ticked,
                                      std::function<void (bool)> onChange)
{
    tick.setTitle (name);
    tick.setTooltip (tooltip);
    tick.setToggleState (ticked, juce::dontSendNotification);
    tick.onClick = [this, onChange = std::move (onChange)] { onChange (tick.getToggleState()); };
}

void CheckColumnCustomComponent::resized()
{
    tick.setBounds (getLocalBounds().withSizeKeepingCentre (std::min (getWidth(), 24), getHeight()));
}

EnvelopesTable::EnvelopesTable (EnvLanes all)
    : PollingView (Pace::calm),
      lanes (std::move (all)),
      table ({}, this)
{
    table.setColour (juce::ListBox::backgroundColourId, palette::ground);
    table.setRowHeight (rowHeight);
    table.setTitle (tr ("Curves"));
    auto& header = table.getHeader();
    constexpr auto flags = juce::TableHeaderComponent::visible;
    header.addColumn ("visible", visible, checkWidth, checkWidth, checkWidth, flags);
    header.addColumn ("enabled", enabled, checkWidth, checkWidth, checkWidth, flags);
    header.addColumn ("parameter", parameter, 100, 60, -1, flags);
    header.setPopupMenuActive (false);
    header.setStretchToFitActive (true);
    table.setHeaderHeight (headerHeight);
    addAndMakeVisible (table);
    table.updateContent();
    pollCalm();
}

EnvelopesTable::~EnvelopesTable()
{
    table.setModel (nullptr);
}

void EnvelopesTable::resized()
{
    table.setBounds (getLocalBounds());
}

void EnvelopesTable::select (int row)
{
    if (table.getSelectedRow() != row)
        table.selectRow (row, false, true);
}

void EnvelopesTable::paintRowBackground (juce::Graphics& g, int row, int width, int height, bool selected)
{
    SMLookAndFeel::fillRow (g, { width, height }, row, selected);
}

void EnvelopesTable::paintCell (juce::Graphics& g, int row, int column, int width, int height, bool)
{
    if (column != parameter)
        return;
    const auto& lane = lanes[static_cast<size_t> (row)];
    juce::Rectangle<int> area (width, height);
    area.removeFromLeft (4);
    g.setColour (lane.colour);
    g.fillRect (area.removeFromLeft (swatch).withSizeKeepingCentre (swatch, swatch));
    area.removeFromLeft (6);
    g.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
    g.setColour (lane.bank->isEnabled (lane.row) ? palette::value : palette::tableText);
    g.drawText (lane.name, area, juce::Justification::centredLeft, true);
}

juce::Component* EnvelopesTable::refreshComponentForCell (int row, int column, bool,
                                                          juce::Component* existing)
{
    if (column == parameter || row >= getNumRows())
    {
        delete existing;
        return nullptr;
    }
    auto* cell = dynamic_cast<CheckColumnCustomComponent*> (existing);
    if (cell == nullptr)
    {
        delete existing;
        cell = new CheckColumnCustomComponent();
    }
    const auto& lane = lanes[static_cast<size_t> (row)];
    const auto isVisible = column == visible;
    cell->set (isVisible ? tr ("%1 visible", lane.name) : tr ("%1 enabled", lane.name),
               tr (isVisible ? visibleTip : enabledTip),
               isVisible ? lane.bank->isVisible (lane.row) : lane.bank->isEnabled (lane.row),
               [this, isVisible, bank = lane.bank, bankRow = lane.row] (bool on)
               {
                   isVisible ? bank->setVisible (bankRow, on) : bank->setEnabled (bankRow, on);
                   table.repaint();
               });
    return cell;
}

juce::String EnvelopesTable::getCellTooltip (int row, int column)
{
    return column == parameter && row >= 0 && row < getNumRows()
               ? tr ("Edits the curve of %1", lanes[static_cast<size_t> (row)].name)
               : juce::String();
}

void EnvelopesTable::selectedRowsChanged (int row)
{
    if (row >= 0 && onSelect != nullptr)
        onSelect (row);
}

void EnvelopesTable::returnKeyPressed (int row)
{
    const auto& lane = lanes[static_cast<size_t> (row)];
    lane.bank->setEnabled (lane.row, !lane.bank->isEnabled (lane.row));
    pollCalm();
}

void EnvelopesTable::pollCalm()
{
    std::vector<std::uint32_t> now;
    for (const auto& lane : lanes)
        now.push_back (lane.bank->revision (lane.row));
    if (now == shown)
        return;
    shown = std::move (now);
    table.updateContent();
    table.repaint();
}

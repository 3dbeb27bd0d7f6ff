#pragma once

#include "ui/envelope/EnvLane.h"
#include "ui/poll/PollingView.h"

#include <functional>

/** A tick in a column of the table. */
class CheckColumnCustomComponent : public juce::Component
{
public:
    CheckColumnCustomComponent();

    /** @param name   says what is ticked, for readers of the screen */
    void set (const juce::String& name, const juce::String& tooltip, bool ticked,
              std::function<void (bool)> onChange);

    bool isTicked() const { return tick.getToggleState(); }
    void click() { tick.triggerClick(); }

    void resized() override;

private:
    juce::ToggleButton tick;
};

/** The curves of an editor, a row each: whether a row is seen, whether it acts, and its name beside its colour. The row
    that is chosen is the one that is edited. */
class EnvelopesTable : public PollingView, private juce::TableListBoxModel
{
public:
    explicit EnvelopesTable (EnvLanes);
    ~EnvelopesTable() override;

    std::function<void (int row)> onSelect;

    /** Chooses a row without telling. */
    void select (int row);

    static constexpr int rowHeight = 22;

    void resized() override;

private:
    enum Column
    {
        visible = 1,
        enabled,
        parameter
    };

    int getNumRows() override { return static_cast<int> (lanes.size()); }
    void paintRowBackground (juce::Graphics&, int row, int width, int height, bool selected) override;
    void paintCell (juce::Graphics&, int row, int column, int width, int height, bool selected) override;
    juce::Component* refreshComponentForCell (int row, int column, bool selected,
                                              juce::Component* existing) override;
    juce::String getCellTooltip (int row, int column) override;
    void selectedRowsChanged (int row) override;
    void returnKeyPressed (int row) override;
    void pollCalm() override;

    const EnvLanes lanes;
    juce::TableListBox table;
    std::vector<std::uint32_t> shown; ///< revisions
};

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

/** Tells of a press of the right button on a row of a list when the button goes down. The list itself tells of one on a
    selected row only when the button comes up, and not at all after 300 ms. Message thread. */
class RowMenuPress : private juce::MouseListener
{
public:
    /** @param list      has to live as long as this
        @param onPress   gets the row, which is selected by then, and the place in the list */
    RowMenuPress (juce::ListBox& l, std::function<void (int row, juce::Point<int> place)> onPress)
        : list (l),
          press (std::move (onPress))
    {
        list.addMouseListener (this, true);
    }

    ~RowMenuPress() override { list.removeMouseListener (this); }
    RowMenuPress (const RowMenuPress&) = delete;
    RowMenuPress& operator= (const RowMenuPress&) = delete;

private:
    void mouseDown (const juce::MouseEvent& event) override
    {
        // The header and the bars scroll with no row.
        if (!event.mods.isPopupMenu()
            || !list.getViewport()->getViewedComponent()->isParentOf (event.originalComponent))
            return;
        const auto place = event.getEventRelativeTo (&list).getPosition();
        const auto row = list.getRowContainingPosition (place.x, place.y);
        if (row < 0)
            return;
        if (!list.isRowSelected (row))
            list.selectRow (row);
        press (row, place);
    }

    juce::ListBox& list;
    const std::function<void (int row, juce::Point<int> place)> press;
};

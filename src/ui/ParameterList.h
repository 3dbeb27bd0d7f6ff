#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <vector>

class CPlatterdex;

/** Every command with its value and a control, and a field that looks for names. Only the rows in sight exist. */
class ParameterList : public juce::Component, private juce::ListBoxModel
{
public:
    /** @param close   called by Escape in an empty field of search; may be empty */
    explicit ParameterList (CPlatterdex&, std::function<void()> close = {});

    /** Shows only commands whose name holds each word of the text; all for an empty one. */
    void search (const juce::String& text);

    int getNumRows() override { return static_cast<int> (found.size()); }

    void paint (juce::Graphics&) override;
    void resized() override;
    void focusGained (FocusChangeType) override { searchField.grabKeyboardFocus(); }

private:
    void paintListBoxItem (int row, juce::Graphics&, int width, int height, bool selected) override;
    juce::Component* refreshComponentForRow (int row, bool selected, juce::Component* existing) override;

    CPlatterdex& engine;
    const std::function<void()> close;
    juce::TextEditor searchField;
    juce::ListBox list;
    std::vector<int> found; ///< command numbers
};

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <vector>

class CPlatterdex;

/** Every command with its value and a control, and a field that looks for names. Only the rows in sight exist. */
class ParameterList : public juce::Component, private juce::ListBoxModel
{
public:
    explicit ParameterList (CPlatterdex&);

    /** Shows only commands whose name holds each word of the text; all for an empty one. */
    void search (const juce::String& text);

    int getNumRows() override { return static_cast<int> (found.size()); }

    void paint (juce::Graphics&) override;
    void resized() override;

private:
    void paintListBoxItem (int row, juce::Graphics&, int width, int height, bool selected) override;
    juce::Component* refreshComponentForRow (int row, bool selected, juce::Component* existing) override;

    CPlatterdex& engine;
    juce::TextEditor searchField;
    juce::ListBox list;
    std::vector<int> found; ///< command numbers
};

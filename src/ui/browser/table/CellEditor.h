#pragma once

#include "library/songs/SongField.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

/** The field in which a cell of the table is edited: Return takes the text, Escape and another place of the keyboard leave
    it. Message thread. */
class CellEditor : public juce::TextEditor
{
public:
    /** @param ended   called once, with the text if it was taken and is another; may end this object */
    CellEditor (const juce::String& text, const juce::Font& font, SongField field,
                std::function<void (std::optional<juce::String>)> ended);

private:
    void end (bool isTaken);

    const juce::String before;
    std::function<void (std::optional<juce::String>)> ended;
};

#pragma once

#include "library/query/QueryTerms.h"
#include "library/songs/SongRecord.h"
#include "session/browse/PlayHistory.h"
#include "ui/browser/model/SongStatus.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <vector>

/** Paints the rows of a table of songs. Message thread. */
class RowPainter
{
public:
    /** A row as it is shown. */
    struct Row
    {
        int index = 0;
        const SongRecord* song = nullptr;   ///< null while nothing is known of it
        const PlayedSong* played = nullptr; ///< of a history
        SongStatus::Sign status {};
        juce::String match;     ///< why it is recommended
        bool isMissing = false; ///< the file is not there
        bool isSelected = false;
    };

    /** @param size   in pixels, 12 to 22 */
    void setFontSize (int size);
    int rowHeight() const noexcept { return height; }
    const juce::Font& font() const noexcept { return textFont; }

    /** The search that rows were found by, so that its parts are marked. */
    void setSearch (QueryTerms, std::vector<SongField> fields);

    static void paintGround (juce::Graphics&, juce::Rectangle<int>, const Row&);

    /** @param columnId   of TableColumn; the rating is a component's */
    void paintCell (juce::Graphics&, juce::Rectangle<int>, const Row&, int columnId) const;

    /** The width that a cell needs for all of its text, or its signs, in pixels. */
    int cellWidth (const Row&, int columnId) const;

private:
    static void paintDeck (juce::Graphics&, juce::Rectangle<int>, const Row&);
    void paintStatus (juce::Graphics&, juce::Rectangle<int>, const Row&) const;
    void paintMarks (juce::Graphics&, juce::Rectangle<int>, const juce::String&, SongField,
                     juce::Justification) const;

    juce::Font textFont;
    int height = 24;
    QueryTerms terms;
    std::vector<SongField> searched;
};

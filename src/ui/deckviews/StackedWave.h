#pragma once

#include "ui/deckviews/BeatWindow.h"
#include "ui/deckviews/MarkLayout.h"
#include "ui/deckviews/ScrollingImage.h"
#include "ui/deckviews/WaveformZoom.h"
#include "ui/poll/DeckNews.h"
#include "ui/poll/PollingView.h"

class CPlatterdex;

/** A deck's waveform in a row of its own, on a line of time that all such rows share: a second is as long in each of them,
    whatever its tempo, and what is heard now stands in the middle. Beats that sound together stand below each other.

    The wheel zooms the waveforms of all decks. Message thread. */
class StackedWave : public PollingView
{
public:
    /** @param deck   0 to 3 */
    StackedWave (CPlatterdex&, int deck);

    int deck() const noexcept { return watch.deck(); }
    bool hasTrack() const noexcept { return watch->loadedFrames > 0; }

    /** The marks of the last paint, physical pixels from the left edge. */
    MarkLayout marks() const { return marksOf (leftColumn, track.length (getWidth())); }

    /** Waveform columns drawn by the last paint, physical pixels. */
    int columnsDrawn() const noexcept { return lastColumnsDrawn; }

    void paint (juce::Graphics&) override;
    void resized() override;
    void mouseWheelMove (const juce::MouseEvent&, const juce::MouseWheelDetails&) override;

private:
    void pollMoving() override;

    void redrawAll();
    double wantedZoom() const;
    bool followZoom();
    MarkLayout marksOf (int64_t left, int width) const;
    void drawStrip (juce::Image&, int64_t first) const;
    void paintLoop (juce::Graphics&, const MarkLayout::Region&) const;
    void paintBeats (juce::Graphics&, const std::vector<Mark>&) const;
    void paintFlags (juce::Graphics&, const std::vector<Mark>&) const;
    void paintPole (juce::Graphics&, int x, juce::Colour, int width = 1) const;
    void paintLetter (juce::Graphics&);
    juce::Image drawLetter() const;

    CPlatterdex& engine;
    const DeckWatch watch;
    const juce::SharedResourcePointer<WaveformZoom> zoom;
    ScrollingImage image; ///< the wave with its marks
    TrackScale track;     ///< of the last paint; its zoom follows the tempo
    BeatWindow beats;
    TrackPlaces places;
    int64_t column = 0;     ///< at the playhead, of the last poll
    int64_t leftColumn = 0; ///< at the left edge, of the last paint
    juce::Image letter;     ///< of the deck, as it was painted last
    bool letterLit = false;
    int32_t loadedFrames = 0;
    bool spectral = true;
    int lastColumnsDrawn = 0;

    const DeckNews news; ///< last: its call uses all of the above
};

#pragma once

#include "ui/deckviews/BeatWindow.h"
#include "ui/deckviews/ScrollingImage.h"
#include "ui/deckviews/WaveformZoom.h"
#include "ui/deckviews/scope/DragSteps.h"
#include "ui/poll/DeckNews.h"
#include "ui/poll/DeckWatch.h"
#include "ui/poll/PollingView.h"

#include <functional>

class CPlatterdex;

/** The samples around the playing position, magnified, in the deck's hue and with its beats. The wheel zooms the scopes of all
    decks, a drag scrubs. */
class DeckPeakScope : public PollingView
{
public:
    static constexpr int leastSamplesPerPixel = 1, mostSamplesPerPixel = 512;

    /** @param deck   0 to 3 */
    DeckPeakScope (CPlatterdex&, int deck);

    int deck() const noexcept { return watch.deck(); }

    /** Frames of the file in a logical pixel: a power of two. */
    int samplesPerPixel() const noexcept { return zoom; }

    /** Zooms the scopes of all decks: the others follow at their next look. @param samples   limited to the least and the most */
    void setSamplesPerPixel (int samples);

    void paint (juce::Graphics&) override;
    void resized() override;
    void mouseDown (const juce::MouseEvent&) override;
    void mouseDrag (const juce::MouseEvent&) override;
    void mouseWheelMove (const juce::MouseEvent&, const juce::MouseWheelDetails&) override;

    /** Puts the mouse's pointer to a place of the screen, in logical pixels. */
    std::function<void (juce::Point<float>)> putPointer;

private:
    void pollMoving() override;
    void hear (EngineEvent);

    void redrawAll();
    void step (std::optional<double> move);
    void followZoom();
    void paintColumns (juce::Image&, int64_t first) const;
    void paintBeats (juce::Graphics&, int centre, int height) const;

    CPlatterdex& engine;
    const DeckWatch watch;
    const juce::SharedResourcePointer<WaveformZoom> shared;
    int zoom = 32; ///< as it was drawn last
    BeatWindow beats;
    float wheelTravel = 0.0f;

    ScrollingImage image;
    double scale = 1.0;       ///< of the last paint
    int64_t shownPixel = 0;   ///< the position in logical pixels of the zoom
    int32_t loadedFrames = 0; ///< as shown
    float lastMouseX = 0.0f;
    DragSteps steps;

    const DeckNews news; ///< last: its call uses all of the above
};

#pragma once

#include "ui/deckviews/BeatWindow.h"
#include "ui/deckviews/MarkPainter.h"
#include "ui/deckviews/ScrollingImage.h"
#include "ui/deckviews/WaveformZoom.h"
#include "ui/poll/DeckNews.h"
#include "ui/poll/PollingView.h"

class CPlatterdex;

/** The waveform that runs through a deck's strip below a fixed playhead, with the marks of beats, cues and loops, and the
    time above it. The picture is a record under the hand: pressed it stands, dragged it is scratched.

    Its top is the strip's top, and what it draws lies at fixed heights from there. Above the picture it draws the time
    alone; the picture is opaque and covers the strip's ground, which looks the same everywhere along the strip. */
class DeckWaveform : public PollingView
{
public:
    /** Logical pixels from the strip's top. */
    static constexpr int pictureTop = MarkPainter::pictureTop, pictureBottom = 190, imageTop = 59;

    /** Names a drag out of the strip; the deck is the source component's. */
    static constexpr const char* dragDescription = "DeckWaveformDragSource";

    /** @param deck   0 to 3 */
    DeckWaveform (CPlatterdex&, int deck);
    ~DeckWaveform() override;

    int deck() const noexcept { return watch.deck(); }

    /** Moves at every second tick only, unless a hand scratches: the same wave is shown larger elsewhere. */
    void setHalfPace (bool half) noexcept { halfPace = half; }

    /** Lines that stand in the middle of the picture until an empty array takes them away. */
    void setNotice (const juce::StringArray& lines);

    /** The times above the picture. */
    struct Times
    {
        juce::String large {}; ///< the position, or after a click on it what remains
        juce::String
            small {}; ///< the other one. What remains is at the pitch in force, with a minus before it
        juce::String nextCue {}; ///< "CUE 3  4.2": the bars and beats to the next cue; empty without one
        enum class End
        {
            far,
            near,  ///< 30 s of playing
            blinks ///< 10 s: the time comes and goes
        } end = End::far;
        bool operator== (const Times&) const = default;
    };

    const Times& times() const noexcept { return shown.times; }

    /** The time that is shown large: a click turns it between position and what remains. */
    const juce::String& time() const noexcept { return shown.times.large; }

    /** The room that the time takes above the picture, and where a click turns it. */
    static juce::Rectangle<int> timeArea (int width);

    /** Waveform columns drawn by the last paint, physical pixels. */
    int columnsDrawn() const noexcept { return lastColumnsDrawn; }

    void paint (juce::Graphics&) override;
    void resized() override;
    void mouseDown (const juce::MouseEvent&) override;
    void mouseDrag (const juce::MouseEvent&) override;
    void mouseUp (const juce::MouseEvent&) override;

    /** Zooms the waveforms of all decks. */
    void mouseWheelMove (const juce::MouseEvent&, const juce::MouseWheelDetails&) override;

protected:
    /** Hands the deck's track to the container of drags. @param picture   what hangs at the pointer */
    virtual void beginTrackDrag (const juce::Image& picture);

private:
    /** The rows from the first bar number down to the strip's lower part. */
    class Picture : public juce::Component
    {
    public:
        explicit Picture (DeckWaveform& o) : owner (o)
        {
            setOpaque (true);
            setInterceptsMouseClicks (false, false);
        }
        void paint (juce::Graphics& g) override { owner.paintPicture (g); }

    private:
        DeckWaveform& owner;
    };

    /** The state that was painted last. */
    struct Shown
    {
        int64_t entry = 0; ///< at the playhead
        int32_t loadedFrames = 0;
        bool spectral = true;
        TrackPlaces places;
        Times times;
        juce::StringArray notice;
    };

    void pollMoving() override;
    void pollCalm() override;

    void redrawAll();
    void repaintPicture();
    bool followLoading (int32_t loadedFrames);
    bool followBeats();
    Times readTimes() const;
    juce::String readNextCue() const;
    double secondsLeft() const;
    juce::StringArray readNotice() const;
    void steer();
    juce::Image pictureOfStripAt (juce::Point<int>);
    void paintPicture (juce::Graphics&);
    void paintGround (juce::Graphics&) const;
    void paintNotice (juce::Graphics&) const;

    CPlatterdex& engine;
    const DeckWatch watch;

    Shown shown;
    juce::StringArray notice;
    bool remainingTimeShown = false;

    Picture picture { *this };
    ScrollingImage image;
    TrackScale track; ///< of the last paint
    BeatWindow beats;
    MarkPainter marks;
    int lastColumnsDrawn = 0;

    const juce::SharedResourcePointer<WaveformZoom> zoom;
    double shownZoom = 1.0, shownGain = 1.0;

    bool scratching = false, dragStarted = false;
    bool halfPace = false, restsNow = false;
    float handX = 0.0f;     ///< the hand on the record, pixels from where it was pressed
    double heldFrame = 0.0; ///< the place that it was pressed at
    juce::int64 steeredMs = 0;

    const DeckNews news; ///< last: its call uses all of the above
};

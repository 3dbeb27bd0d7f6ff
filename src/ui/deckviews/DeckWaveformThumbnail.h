#pragma once

#include "ui/poll/DeckNews.h"
#include "ui/poll/DeckWatch.h"
#include "ui/poll/PollingView.h"

class CPlatterdex;

/** A deck's whole track: what has been played is dim, cues, loop and minutes are marked. A click seeks as it
    is let go, a drag with Shift scrubs. Any other drag does nothing: a slip of the hand leaves a playing deck alone. */
class DeckWaveformThumbnail : public PollingView
{
public:
    /** @param deck   0 to 3 */
    DeckWaveformThumbnail (CPlatterdex&, int deck);

    int deck() const noexcept { return watch.deck(); }

    /** Times that the picture has been built; for those who measure. */
    int builds() const noexcept { return buildCount; }

    void paint (juce::Graphics&) override;
    void resized() override;
    void mouseDown (const juce::MouseEvent&) override;
    void mouseDrag (const juce::MouseEvent&) override;
    void mouseUp (const juce::MouseEvent&) override;

private:
    void pollMoving() override;
    void pollCalm() override;
    void hear (EngineEvent);

    void rebuildLater();
    void build (double scale);
    void seekTo (const juce::MouseEvent&);
    float xOf (double frame) const;
    int playheadAt() const;
    bool isEndNear() const;
    void paintMinutes (juce::Graphics&) const;
    void paintPlaces (juce::Graphics&) const;

    CPlatterdex& engine;
    const DeckWatch watch;
    juce::Image picture;
    double pictureScale = 0.0;
    bool stale = true;
    int buildCount = 0;

    int32_t loadedFrames = 0; ///< as shown
    int32_t trackFrames = 0;  ///< of the whole width
    int playheadX = -1;       ///< -1 without a track
    TrackPlaces places;
    float soughtX = -1.0f; ///< of the drag's last seek
    bool warns = false;    ///< the end is near, and the warning is on
    bool scrubs = false;   ///< the press came with Shift

    const DeckNews news; ///< last: its call uses all of the above
};

#pragma once

#include "session/SongPreview.h"
#include "ui/browser/preview/PreviewWave.h"
#include "ui/poll/PollingView.h"
#include "ui/widgets/PXTextButton.h"

/** The song that is heard on the headphones only: its name, its time, and an outline in which a click goes to a place. */
class PreviewPlayerComponent : public PollingView
{
public:
    /** @param preview   outlives this */
    PreviewPlayerComponent (FileStreamPlayer&, SongPreview& preview);

    void paint (juce::Graphics&) override;
    void resized() override;
    void mouseDown (const juce::MouseEvent&) override;
    void mouseDrag (const juce::MouseEvent& event) override { mouseDown (event); }

private:
    void pollCalm() override;
    juce::Rectangle<int> waveArea() const;

    SongPreview& preview;
    PreviewWave wave;
    PXTextButton playButton;
    juce::String path;

    struct Shown
    {
        int pixel = -1, seconds = -1, known = 0;
        bool isPlaying = false, hasFailed = false;
        bool operator== (const Shown&) const = default;
    };
    Shown shown;
};

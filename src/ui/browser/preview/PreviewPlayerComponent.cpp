#include "ui/browser/preview/PreviewPlayerComponent.h"

#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/panel/PanelPaint.h"

namespace
{
constexpr int buttonWidth = 72, gap = 4, waveWidth = PreviewWave::columns, timeWidth = 44;

juce::String minutes (double seconds)
{
    const auto whole = static_cast<int> (seconds);
    return juce::String (whole / 60) + ":" + juce::String (whole % 60).paddedLeft ('0', 2);
}
}

PreviewPlayerComponent::PreviewPlayerComponent (FileStreamPlayer& player, SongPreview& p)
    : PollingView (Pace::calm),
      preview (p),
      wave (player),
      playButton (tr ("PREVIEW"))
{
    setTitle (tr ("Preview"));
    playButton.setComponentID ("_previewButton");
    playButton.setTooltip (tr ("Plays or stops the preview on the headphones."));
    playButton.onClick = [this] { preview.playOrPause(); };
    playButton.setEnabled (false);
    addAndMakeVisible (playButton);
}

juce::Rectangle<int> PreviewPlayerComponent::waveArea() const
{
    return getLocalBounds().withTrimmedRight (timeWidth).removeFromRight (waveWidth).reduced (0, 2);
}

void PreviewPlayerComponent::resized()
{
    playButton.setBounds (
        getLocalBounds().removeFromLeft (buttonWidth).withSizeKeepingCentre (buttonWidth, 20));
}

void PreviewPlayerComponent::pollCalm()
{
    if (path != preview.path())
    {
        path = preview.path();
        wave.read (path);
        shown = {};
        repaint();
    }
    Shown next;
    next.isPlaying = preview.isPlaying();
    next.hasFailed = preview.hasFailed();
    next.known = wave.outline().known;
    if (path.isNotEmpty() && preview.length() > 0.0)
    {
        next.seconds = static_cast<int> (preview.position());
        next.pixel = static_cast<int> (preview.position() / preview.length() * waveWidth);
    }
    if (next == shown)
        return;
    shown = next;
    playButton.setToggleState (next.isPlaying, juce::dontSendNotification);
    playButton.setEnabled (path.isNotEmpty());
    repaint();
}

void PreviewPlayerComponent::mouseDown (const juce::MouseEvent& event)
{
    const auto area = waveArea();
    if (preview.length() <= 0.0 || !area.getHorizontalRange().contains (event.x))
        return;
    preview.seek (preview.length() * (event.x - area.getX()) / area.getWidth());
    refresh();
}

void PreviewPlayerComponent::paint (juce::Graphics& g)
{
    const auto area = waveArea();
    g.setColour (palette::well);
    g.fillRect (area);
    const auto& outline = wave.outline();
    for (int column = 0; column < shown.known; ++column)
    {
        const auto height =
            std::max (1, area.getHeight() * outline.peaks[static_cast<size_t> (column)].load() / 255);
        g.setColour (column < shown.pixel ? palette::label : palette::line);
        g.fillRect (area.getX() + column, area.getCentreY() - height / 2, 1, height);
    }
    if (shown.pixel >= 0)
    {
        g.setColour (palette::accent);
        g.fillRect (area.getX() + shown.pixel, area.getY(), 1, area.getHeight());
    }
    const auto words = getLocalBounds().withTrimmedLeft (buttonWidth + gap).withRight (area.getX() - gap);
    PanelPaint::label (g,
                       shown.hasFailed
                           ? tr ("This file can't be played.")
                           : juce::File::createFileWithoutCheckingPath (path).getFileNameWithoutExtension(),
                       words, juce::Justification::centredLeft);
    PanelPaint::label (g, shown.seconds >= 0 ? minutes (shown.seconds) : juce::String(),
                       getLocalBounds().removeFromRight (timeWidth - gap), juce::Justification::centredRight);
}

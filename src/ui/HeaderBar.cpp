#include "ui/HeaderBar.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"
#include "ui/Look.h"
#include "ui/TimeText.h"

#include <limits>

namespace
{
constexpr int buttonHeight = 24, margin = 8, gap = 4, group = 12;
}

HeaderBar::Layout::Layout (juce::Rectangle<int> bar, bool withAudio)
{
    bar.reduce (margin, (height - buttonHeight) / 2);
    name = bar.removeFromLeft (120);
    if (withAudio)
    {
        audio = bar.removeFromRight (124);
        bar.removeFromRight (gap);
    }
    parameters = bar.removeFromRight (124);
    bar.removeFromRight (group);
    time = bar.removeFromRight (76);
    record = bar.removeFromRight (76);
    bar.removeFromRight (group);
    status = bar;
}

HeaderBar::HeaderBar (CPlatterdex& e, std::function<void()> audioSettings)
    : PollingView (Pace::calm),
      engine (e),
      record (e, CommandTable::numberOf ("DISK_RECORDER"), "Record"),
      hasAudioSettings (audioSettings != nullptr)
{
    setOpaque (true);
    record.setLitColour (Look::danger);
    record.setColour (juce::TextButton::textColourOnId, juce::Colours::white);
    parameters.setClickingTogglesState (true);
    parameters.setTooltip ("Shows every command with its value in place of the decks");
    parameters.onClick = [this]
    {
        if (onShowParameters != nullptr)
            onShowParameters (parameters.getToggleState());
    };
    audio.setTooltip ("Chooses the audio device");
    audio.onClick = std::move (audioSettings);

    for (auto* button : { &parameters, &audio })
    {
        button->setWantsKeyboardFocus (false);
        button->setMouseClickGrabsKeyboardFocus (false);
    }
    addAndMakeVisible (record);
    addAndMakeVisible (parameters);
    addChildComponent (audio);
    audio.setVisible (hasAudioSettings);
}

HeaderBar::Layout HeaderBar::layout() const
{
    return Layout (getLocalBounds(), hasAudioSettings);
}

void HeaderBar::resized()
{
    const auto areas = layout();
    record.setBounds (areas.record);
    parameters.setBounds (areas.parameters);
    audio.setBounds (areas.audio);
}

void HeaderBar::setStatus (const juce::String& sentence)
{
    if (sentence == status)
        return;
    status = sentence;
    repaint (layout().status);
}

void HeaderBar::pollCalm()
{
    record.poll();
    const auto rate = engine.decks.engineRate.get();
    const auto seconds = engine.recorder.isRecording() && rate > 0.0
                             ? static_cast<double> (engine.recorder.recordedFrames) / rate
                             : std::numeric_limits<double>::quiet_NaN();
    const auto time = timeText (seconds);
    if (time == shownTime)
        return;
    shownTime = time;
    repaint (layout().time);
}

void HeaderBar::paint (juce::Graphics& g)
{
    const auto areas = layout();
    Look::fillRaised (g, getLocalBounds(), Look::panel);
    g.setColour (Look::value);
    g.setFont (Look::font (Look::titleSize));
    g.drawText ("Platterdex", areas.name, juce::Justification::centredLeft, false);
    g.setFont (Look::font (Look::valueSize));
    g.drawText (shownTime, areas.time, juce::Justification::centred, false);
    g.setColour (Look::label);
    g.drawText (status, areas.status, juce::Justification::centredLeft, true);
}

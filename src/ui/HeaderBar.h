#pragma once

#include "ui/CommandButton.h"
#include "ui/PollingView.h"

#include <functional>

class CPlatterdex;

/** The line on top: name, the application's news, the master recorder, and what opens further views. */
class HeaderBar : public PollingView
{
public:
    static constexpr int height = 40;

    /** @param audioSettings   opens the dialog of the audio device; empty inside a host, which has its own */
    HeaderBar (CPlatterdex&, std::function<void()> audioSettings);

    /** One sentence on what goes on in the background; empty for nothing. */
    void setStatus (const juce::String&);

    /** Called when the list of all parameters is wanted, or no longer. */
    std::function<void (bool shown)> onShowParameters;

    /** Sets the light of the button for them. */
    void setParametersShown (bool shown) { parameters.setToggleState (shown, juce::dontSendNotification); }

    void paint (juce::Graphics&) override;
    void resized() override;

    const juce::String& recordedTime() const noexcept { return shownTime; }

private:
    struct Layout
    {
        explicit Layout (juce::Rectangle<int> bar, bool withAudio);
        juce::Rectangle<int> name, status, record, time, parameters, audio;
    };

    void pollCalm() override;
    Layout layout() const;

    CPlatterdex& engine;
    CommandButton record;
    juce::TextButton parameters { "All parameters" }, audio { "Audio settings" };
    const bool hasAudioSettings;
    juce::String status, shownTime;
};

#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

#include <functional>
#include <memory>

/** The window of a slot's plug-in: the plug-in's own editor, or JUCE's list of all its parameters. It must be gone before the
    plug-in is. Message thread. */
class PluginWindow : public juce::DocumentWindow
{
public:
    enum class Content
    {
        own,       ///< where the plug-in has an editor; else the list
        parameters ///< the list
    };

    PluginWindow (juce::AudioProcessor&, const juce::String& title, Content, std::function<void()> onClose);
    ~PluginWindow() override;

    void closeButtonPressed() override { onClose(); }

private:
    const std::function<void()> onClose;
};

#pragma once

#include "engine/AutomixSource.h"
#include "settings/Folders.h"
#include "support/Clock.h"
#include "support/Pacing.h"
#include "support/Prompts.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <functional>
#include <memory>
#include <optional>

class CPlatterdex;

/** Everything that differs between a plug-in, an application, an offline run and a test. */
struct EngineWorld
{
    Folders folders;

    /** The decoder's shared library. */
    juce::File decoderLibrary;

    /** Real time by default; an offline run counts the audio it has rendered. */
    MillisecondClock clock = [] { return juce::Time::getMillisecondCounter(); };

    /** Local time for the names of recordings. */
    std::function<juce::Time()> wallClock = [] { return juce::Time::getCurrentTime(); };

    /** Live: worker threads pause for the sake of audio, and the recorder may drop a block. */
    Pacing::Mode pacing = Pacing::Mode::live;

    /** Fixes everything random, so that two runs give the same samples. Without it the clock seeds. */
    std::optional<int64_t> seed;

    /** Makes the editor; an engine without one has none. */
    std::function<juce::AudioProcessorEditor*(CPlatterdex&)> createEditor;

    /** Without them nobody is asked, and every answer is no. */
    std::shared_ptr<Prompts> prompts;

    /** Asked before the settings are saved at the end: false while another program has the folders. Without it they are. */
    std::function<bool()> mayKeepSettings;

    /** The source of automix's tracks; without one it plays what the decks hold. */
    std::shared_ptr<AutomixSource> automixSource;

    /** True where a message loop runs: the engine then delivers to its listeners by itself. Otherwise whoever drives
        the engine calls CPlatterdex::deliverMessages(). */
    bool hasMessageLoop = false;
};

#pragma once

#include "deck/DeckWorld.h"
#include "deck/edit/GridCommands.h"
#include "deck/edit/LoopCommands.h"
#include "deck/load/DeckLoader.h"
#include "deck/play/Transport.h"
#include "engine/Automix.h"
#include "engine/EngineWorld.h"
#include "engine/HostTransport.h"
#include "instruments/preset/ContentStore.h"
#include "instruments/sampler/Sampler.h"
#include "instruments/slicegate/SlicegateDeckState.h"
#include "instruments/smartknob/SmartKnobs.h"
#include "mixer/AudioRecorder.h"
#include "mixer/Channel.h"
#include "mixer/LatencyProbe.h"
#include "mixer/LineThrough.h"
#include "mixer/MasterLimiter.h"
#include "mixer/Meters.h"
#include "mixer/Monitor.h"
#include "mixer/insert/VstSlot.h"
#include "settings/EngineSettings.h"
#include "support/ListenerList.h"
#include "support/RandGeneratorLCG.h"
#include "timecode/deckmode/TimecodeListener.h"
#include "tracks/BatchAnalysis.h"
#include "tracks/FileStreamPlayer.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <array>
#include <limits>

class CommandParameter;

/** The engine: an audio processor that owns every part and hands the host's calls on.

    Every control is a numbered command, 1 to 465 (CommandTable.h); the host's parameters, the mapping, scripts and the
    editor all go through setParameter and getParameter. What happens in a block stands in ProcessBlock.cpp. The
    processor's callback lock, which a host holds around processBlock, is the one lock of deck and mixer state. */
class CPlatterdex : public juce::AudioProcessor, private juce::Timer
{
public:
    static constexpr int inputChannels = 10, outputChannels = 14;

    /** The command number and value that make the engine the master of its own tempo, in place of a host. */
    static constexpr int standaloneCall = 3180;
    static constexpr float standaloneValue = 3180.0f;

    explicit CPlatterdex (EngineWorld);
    ~CPlatterdex() override;

    //==================================================================================================================
    // Commands. Any thread.

    /** Carries a command out. Numbers outside the table do nothing. */
    void setParameter (int number, float value) override;

    /** The same with the two further arguments that some commands take: bend and scratch scale of the jog. */
    void dispatch (int number, float value, float arg1, float arg2);

    /** Reads a command's state; also the meters, 1001 to 1006. Unknown numbers read 0. Takes no lock. */
    float getParameter (int number) override;

    /** The reading as a control shows it: writing it again changes nothing, also where writes are turned round. */
    double controlValue (int number);

    /** Carries a command out as setParameter() does, for a hand on the editor's controls: the host hears of it, so that
        it can write automation. Message thread. */
    void edit (int number, float value);

    /** Begins and ends a hand's hold on a control, which the host takes as one gesture. Every edit outside is one by
        itself. Message thread. */
    void beginGesture (int number);
    void endGesture (int number);

    const juce::String getParameterName (int number) override;
    const juce::String getParameterText (int number) override;

    /** The text of a command for views: the effect's own text where it has one, such as "1/8" or "Reverb", else as
        getParameterText(). */
    juce::String displayText (int number);
    int getNumParameters() override;

    /** Loads a track into a deck, 0 to 3. Returns when the load has begun. Not on the audio thread. */
    void loadTrack (const juce::File&, int deck);

    /** Listeners hear the engine's events, messages and the tempo of each track that is loaded or analysed. Any thread that
        may block. */
    void addAnalysisListener (EngineListener& listener) { listeners.add (listener); }
    void removeAnalysisListener (EngineListener& listener) { listeners.remove (listener); }

    /** Starts a recording into the settings' file, or ends the one that runs. Not on the audio thread. */
    void toggleRecorder();

    /** Serves the engine's requests to itself and hands its news to the listeners. Message thread; an engine without a
        message loop has it called by whoever drives it. */
    void deliverMessages();

    //==================================================================================================================
    // The host's side

    const juce::String getName() const override { return "Platterdex"; }
    void prepareToPlay (double sampleRate, int maximumBlock) override;
    void releaseResources() override {}
    void processBlock (juce::AudioBuffer<float>&, juce::MidiBuffer&) override;

    /** Silence: the inputs, which stand in the same channels, are control signals that must not reach the master. */
    void processBlockBypassed (juce::AudioBuffer<float>& buffer, juce::MidiBuffer&) override
    {
        buffer.clear();
    }

    using AudioProcessor::processBlock;
    using AudioProcessor::processBlockBypassed;

    bool isBusesLayoutSupported (const BusesLayout&) const override;
    const juce::String getInputChannelName (int) const override;
    const juce::String getOutputChannelName (int) const override;
    bool isInputChannelStereoPair (int) const override { return true; }
    bool isOutputChannelStereoPair (int) const override { return true; }
    bool silenceInProducesSilenceOut() const override { return false; }
    bool acceptsMidi() const override { return false; }
    bool producesMidi() const override { return false; }

    /** Decks play without any input: a host must never take silence for the end. */
    double getTailLengthSeconds() const override { return std::numeric_limits<double>::infinity(); }

    juce::AudioProcessorEditor* createEditor() override;
    bool hasEditor() const override { return true; }

    bool isParameterAutomatable (int) const override { return true; }
    bool isMetaParameter (int) const override { return false; }
    int getNumPrograms() override { return 1; }
    int getCurrentProgram() override { return 0; }
    void setCurrentProgram (int) override {}
    const juce::String getProgramName (int) override { return {}; }
    void changeProgramName (int, const juce::String&) override {}

    // The host saves nothing: all state lives in the system's own files.
    void getStateInformation (juce::MemoryBlock&) override {}
    void getCurrentProgramStateInformation (juce::MemoryBlock&) override {}
    void setStateInformation (const void*, int) override {}
    void setCurrentProgramStateInformation (const void*, int) override {}

    //==================================================================================================================
    // The parts, in order of construction. Public for the command table, the block's stages and the views' polling.

    const EngineWorld environment;
    ListenerList listeners;
    Pacing pacing;
    FileStreamPlayer preview;
    EngineSettings settings;
    RandGeneratorLCG random;
    AudioRecorder recorder;
    Channels channels;
    MasterLimiter limiter;
    Monitor monitor;
    Meters masterMeters;
    DeckWorld decks;
    DeckLoaders loaders { decks, environment.decoderLibrary };
    std::array<SlicegateDeckState, deckCount> slicegates;
    std::array<TimecodeDeck, deckCount> timecodes;
    TimecodeListener timecodeListener { timecodes, decks };
    std::array<LineThrough, deckCount> lineThroughs;
    LatencyProbe latencyProbe;
    Transport transport;
    LoopCommands loops { decks };
    GridCommands grids { decks };
    SmartKnobs smartKnobs { decks, channels };

    /** The decks' slots for other people's plug-ins; those belong to plugins/slot. */
    std::array<VstSlot, deckCount> vstSlots;

    /** The contents of pads and knobs, kept among the set-up files. The message thread. */
    ContentStore instrumentContents;
    Automix automix;
    BatchAnalysis batchAnalysis;
    HostTransport host;
    Sampler sampler { decks, host, environment.folders, environment.decoderLibrary, environment.wallClock };
    Relaxed<int> hostBlockSize { 256 }; ///< what a hosted plug-in is told

    /** The place where a hand last had the crossfader, 0 to 1, which is kept for the next start: automix and fades leave it
        where they end, with one side silent. */
    Relaxed<double> handCrossfader { 0.5 };

    /** The bytes of the settings' file: the settings as a hand has left them, without a fade that runs. Any thread that may
        block, without the callback lock. */
    std::vector<std::byte> settingsToKeep();

    /** True if no settings were found when this engine was made. */
    bool isFirstRun = false;

private:
    static BusesProperties buses();
    CommandParameter* parameterOf (int number) const;
    void serveRequests();
    void toggleAutomix();
    void askToStopAutomix();
    void tellOfDamagedContents();
    void loadNextTrack (int deck);
    void stopAutomixWithoutTracks();
    bool holdsAutomixTrack() const;
    void keepPads();
    void timerCallback() override { deliverMessages(); }

    std::vector<std::string> damagedContents; ///< sentences that are yet to be told
    bool automixHasBegun = false;             ///< with a track, since it was switched on
    bool automixFoundNoTrack = false;         ///< to begin with

    /** An answer to a prompt may come when the engine has gone: it looks here whether it has. */
    const std::shared_ptr<const int> lifetime = std::make_shared<const int> (0);
};

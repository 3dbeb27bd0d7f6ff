#pragma once

#include <juce_audio_utils/juce_audio_utils.h>

#include <array>
#include <map>

/** What the shells need of an engine, until the engine is there: buses, numbered parameters, no sound. */
struct EngineWorld
{
    juce::File root, decoder;
};

class CPlatterdex : public juce::AudioProcessor
{
public:
    explicit CPlatterdex (EngineWorld) : juce::AudioProcessor (buses())
    {
        for (int number = 1; number <= 465; ++number)
            addParameter (new Parameter (*this, number));
    }

    void setParameter (int number, float value) override
    {
        const juce::ScopedLock lock (getCallbackLock());
        if (number == 3180 && value == 3180.0f)
            standalone = true;
        if (number < 1 || number > 465)
            return;
        auto& state = states[(size_t)number];
        const auto isToggle = (number >= 41 && number <= 44) || number == 465;
        if (!isToggle)
            state = value;
        else if (value > 0.0f)
            state = 1.0f - state;
    }

    float getParameter (int number) override
    {
        if (number == 9)
            return standalone ? 1.0f : 0.0f;
        return number >= 1 && number <= 465 ? states[(size_t)number] : 0.0f;
    }

    const juce::String getParameterName (int number) override
    {
        static const std::map<int, const char*> names{ { 1, "Play/Pause A" },
                                                       { 9, "Set Master A" },
                                                       { 29, "Pitch Bend Nudge (-4.00%) A" },
                                                       { 41, "Key Lock A" },
                                                       { 277, "Crossfader" },
                                                       { 445, "VST Set Insert/Send Signal Routing Slot A" },
                                                       { 464, "Cue/Play D" },
                                                       { 465, "Disk Recorder" } };
        if (number < 1 || number > 465)
            return {};
        const auto found = names.find (number);
        return found != names.end() ? juce::String (found->second) : "Command " + juce::String (number);
    }

    const juce::String getParameterText (int number) override
    {
        return juce::String (getParameter (number), 2);
    }

    const juce::String getName() const override { return "Platterdex"; }
    void prepareToPlay (double, int) override {}
    void releaseResources() override {}
    void processBlock (juce::AudioBuffer<float>& buffer, juce::MidiBuffer&) override { buffer.clear(); }
    void processBlockBypassed (juce::AudioBuffer<float>&, juce::MidiBuffer&) override {}
    bool isBusesLayoutSupported (const BusesLayout& wanted) const override
    {
        const auto isStereo = [] (const juce::AudioChannelSet& set)
        { return set == juce::AudioChannelSet::stereo(); };
        return wanted.inputBuses.size() == 5 && wanted.outputBuses.size() == 7
               && std::all_of (wanted.inputBuses.begin(), wanted.inputBuses.end(), isStereo)
               && std::all_of (wanted.outputBuses.begin(), wanted.outputBuses.end(), isStereo);
    }
    bool acceptsMidi() const override { return false; }
    bool producesMidi() const override { return false; }
    double getTailLengthSeconds() const override { return 0.0; }
    juce::AudioProcessorEditor* createEditor() override
    {
        return new juce::GenericAudioProcessorEditor (*this);
    }
    bool hasEditor() const override { return true; }
    int getNumPrograms() override { return 1; }
    int getCurrentProgram() override { return 0; }
    void setCurrentProgram (int) override {}
    const juce::String getProgramName (int) override { return {}; }
    void changeProgramName (int, const juce::String&) override {}
    void getStateInformation (juce::MemoryBlock&) override {}
    void setStateInformation (const void*, int) override {}

private:
    /** A host writes buttons as presses and releases, and its wrappers drop what equals the value read: so a button
        reads as it was last written, and every press and every release arrives once. */
    struct Parameter : juce::AudioProcessorParameterWithID
    {
        Parameter (CPlatterdex& e, int n)
            : juce::AudioProcessorParameterWithID (juce::ParameterID ("command" + juce::String (n), 1),
                                                   e.getParameterName (n)),
              engine (e),
              number (n)
        {
        }
        float getValue() const override { return isButton() ? written.load() : engine.getParameter (number); }
        void setValue (float value) override
        {
            written = value;
            engine.setParameter (number, value);
        }
        float getDefaultValue() const override { return 0.0f; }
        juce::String getText (float value, int) const override { return juce::String (value, 2); }
        float getValueForText (const juce::String& text) const override { return text.getFloatValue(); }
        bool isButton() const { return number < 21 || (number >= 41 && number <= 44) || number > 460; }

        CPlatterdex& engine;
        const int number;
        std::atomic<float> written{ 0.0f };
    };

    static BusesProperties buses()
    {
        BusesProperties result;
        for (const auto* name : { "Deck1", "Deck2", "Deck3", "Deck4", "Mic" })
            result.addBus (true, name, juce::AudioChannelSet::stereo());
        for (const auto* name : { "Master", "Monitor", "Deck1", "Deck2", "Deck3", "Deck4", "Sampler" })
            result.addBus (false, name, juce::AudioChannelSet::stereo());
        return result;
    }

    std::array<float, 466> states{};
    bool standalone = false;
};

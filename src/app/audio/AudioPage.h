#pragma once

#include "app/audio/DeviceKeeper.h"
#include "app/audio/OutputPairs.h"
#include "support/Prompts.h"
#include "ui/preferences/RowGroupsPage.h"

#include <memory>

/** The page of the preferences on the audio device: driver, cards, rate and size of blocks, and what each pair of outputs
    carries, with a tone to find it by. Message thread. */
class AudioPage : public RowGroupsPage, private juce::ChangeListener
{
public:
    static constexpr int height = 520; ///< has room for the rows of any device

    /** @param manager, keeper, pairs   outlive this
        @param routed    called after a pair was given another source
        @param prompts   tells what does not open; may be null */
    AudioPage (juce::AudioDeviceManager& manager, DeviceKeeper& keeper, OutputPairs& pairs,
               std::function<void()> routed, std::shared_ptr<Prompts> prompts);
    ~AudioPage() override;

private:
    void changeListenerCallback (juce::ChangeBroadcaster*) override { rebuild(); }

    /** Makes all rows, unless they would be the same; a control that has the keyboard keeps it. */
    void rebuild();
    void addDevice (juce::AudioIODeviceType&);
    void addOutputs (int outputs);
    std::unique_ptr<SettingRow> ofChoice (const char* id, const juce::String& caption,
                                          const juce::String& tip, const juce::StringArray& entries,
                                          std::function<int()> read, std::function<void (int)> write);
    juce::String shape() const;
    void use (const DeviceKeeper::Card&);

    /** Opens the device with one thing changed. */
    void change (const std::function<void (juce::AudioDeviceManager::AudioDeviceSetup&)>&);
    void tell (const juce::String& fault);

    juce::AudioDeviceManager& manager;
    DeviceKeeper& keeper;
    OutputPairs& pairs;
    const std::function<void()> routed;
    const std::shared_ptr<Prompts> prompts;
    juce::String builtShape;
};

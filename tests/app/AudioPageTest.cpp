#include "app/audio/AudioPage.h"

#include "app/audio/SilentDevice.h"
#include "shared/ScriptedPrompts.h"
#include "ui/look/DefaultLook.h"

#include <gtest/gtest.h>

namespace
{
/** A kind of device of which there is none. */
class NoCards : public juce::AudioIODeviceType
{
public:
    NoCards() : AudioIODeviceType ("Cards") {}

    void scanForDevices() override {}
    juce::StringArray getDeviceNames (bool) const override { return {}; }
    int getDefaultDeviceIndex (bool) const override { return 0; }
    int getIndexOfDevice (juce::AudioIODevice*, bool) const override { return -1; }
    bool hasSeparateInputsAndOutputs() const override { return false; }
    juce::AudioIODevice* createDevice (const juce::String&, const juce::String&) override { return nullptr; }
};

class Manager : public juce::AudioDeviceManager
{
    void createAudioDeviceTypes (juce::OwnedArray<juce::AudioIODeviceType>& types) override
    {
        types.add (new NoCards());
        types.add (new SilentDeviceType());
    }
};

struct AudioPageBench
{
    AudioPageBench()
    {
        keeper.start();
        page = std::make_unique<AudioPage> (
            manager, keeper, pairs, [this] { ++routed; }, prompts);
        page->setVisible (true);
    }

    template <typename Control>
    Control& in (const char* row) const
    {
        for (auto* child : page->findChildWithID (row)->getChildren())
            if (auto* found = dynamic_cast<Control*> (child))
                return *found;
        throw std::runtime_error (row);
    }

    void choose (const char* row, const juce::String& text) const
    {
        auto& box = in<juce::ComboBox> (row);
        for (int i = 0; i < box.getNumItems(); ++i)
            if (box.getItemText (i) == text)
                return box.setSelectedItemIndex (i, juce::sendNotificationSync);
        FAIL() << text;
    }

    const juce::ScopedJuceInitialiser_GUI juceScope;
    const juce::SharedResourcePointer<DefaultLook> look;
    const std::shared_ptr<ScriptedPrompts> prompts = std::make_shared<ScriptedPrompts>();
    juce::String kept;
    Manager manager;
    DeviceKeeper keeper {
        manager, { [this] { return kept; }, [this] (const auto& choice) { kept = choice; } }, 10, 14
    };
    OutputPairs pairs;
    int routed = 0;
    std::unique_ptr<AudioPage> page;
};
}

TEST (AudioPage, ShowsTheDeviceAndChangesItAtOnce)
{
    AudioPageBench desk;
    EXPECT_EQ (desk.in<juce::ComboBox> ("driver").getText(), SilentDevice::name);
    EXPECT_EQ (desk.in<juce::ComboBox> ("rate").getText(), "48000 Hz");
    desk.choose ("rate", "96000 Hz");
    EXPECT_EQ (desk.manager.getCurrentAudioDevice()->getCurrentSampleRate(), 96000.0);
    desk.choose ("block", "64");
    EXPECT_EQ (desk.manager.getCurrentAudioDevice()->getCurrentBufferSizeSamples(), 64);
    desk.page->refresh();
    EXPECT_EQ (desk.in<juce::ComboBox> ("rate").getText(), "96000 Hz");
    EXPECT_EQ (desk.in<juce::Label> ("latency").getText(), "0.7 ms out, 0.7 ms in, a block lasts 0.7 ms");

    desk.choose ("driver", "Cards");
    ASSERT_EQ (desk.prompts->asked.size(), 1);
    EXPECT_EQ (desk.prompts->asked[0], "Audio|Cards has no card here.");
    EXPECT_EQ (desk.manager.getCurrentAudioDeviceType(), SilentDevice::name);
    EXPECT_EQ (desk.in<juce::ComboBox> ("driver").getText(), SilentDevice::name)
        << "the choice is shown as it is";
}

TEST (AudioPage, EachPairOfOutputsHasItsSourceAndItsTone)
{
    AudioPageBench desk;
    EXPECT_EQ (desk.in<juce::ComboBox> ("pair0").getText(), "Master");
    EXPECT_EQ (desk.in<juce::ComboBox> ("pair6").getText(), "Sampler");
    desk.choose ("pair2", "Master");
    desk.choose ("pair3", "Nothing");
    EXPECT_EQ (desk.pairs.source (2), 0);
    EXPECT_EQ (desk.pairs.source (3), OutputPairs::silent);
    EXPECT_EQ (desk.routed, 2);

    desk.in<juce::Button> ("pair2").onClick();
    std::array<float, 480> left {}, right {};
    desk.pairs.begin();
    desk.pairs.addTone (1, left.data(), right.data(), 480);
    EXPECT_EQ (juce::FloatVectorOperations::findMaximum (left.data(), 480), 0.0f);
    desk.pairs.addTone (2, left.data(), right.data(), 480);
    EXPECT_GT (juce::FloatVectorOperations::findMaximum (left.data(), 480), 0.05f);
}

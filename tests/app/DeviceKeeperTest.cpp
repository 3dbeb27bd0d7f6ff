#include "app/audio/DeviceKeeper.h"
#include "app/audio/SilentDevice.h"

#include <gtest/gtest.h>
#include <juce_events/juce_events.h>

namespace
{
/** The sockets of a computer, and the cards that are plugged in. */
struct Sockets
{
    juce::StringArray cards;
    int opened = 0;
};

/** A card that runs as long as it is plugged in. */
class PluggedCard : public SilentDevice
{
public:
    PluggedCard (Sockets& s, const juce::String& cardName)
        : SilentDevice (cardName, "Cards"),
          sockets (s),
          card (cardName)
    {
    }

    juce::StringArray getOutputChannelNames() override
    {
        auto names = SilentDevice::getOutputChannelNames();
        if (card.contains ("two"))
            names.removeRange (2, names.size());
        return names;
    }
    juce::String open (const juce::BigInteger& in, const juce::BigInteger& out, double rate,
                       int frames) override
    {
        if (!isPlugged())
            return "The card is gone.";
        ++sockets.opened;
        return SilentDevice::open (in, out, rate, frames);
    }
    bool isOpen() override { return isPlugged() && SilentDevice::isOpen(); }

private:
    bool isPlugged() const { return sockets.cards.contains (card); }

    Sockets& sockets;
    const juce::String card;
};

class Cards : public juce::AudioIODeviceType
{
public:
    explicit Cards (Sockets& s) : AudioIODeviceType ("Cards"), sockets (s) {}

    void scanForDevices() override { listed = sockets.cards; }
    juce::StringArray getDeviceNames (bool) const override { return listed; }
    int getDefaultDeviceIndex (bool) const override { return 0; }
    int getIndexOfDevice (juce::AudioIODevice* device, bool) const override
    {
        return device != nullptr ? listed.indexOf (device->getName()) : -1;
    }
    bool hasSeparateInputsAndOutputs() const override { return false; }
    juce::AudioIODevice* createDevice (const juce::String& output, const juce::String&) override
    {
        return listed.contains (output) ? new PluggedCard (sockets, output) : nullptr;
    }

private:
    Sockets& sockets;
    juce::StringArray listed;
};

class Manager : public juce::AudioDeviceManager
{
public:
    explicit Manager (Sockets& s) : sockets (s) {}

private:
    void createAudioDeviceTypes (juce::OwnedArray<juce::AudioIODeviceType>& types) override
    {
        types.add (new Cards (sockets));
        types.add (new SilentDeviceType());
    }

    Sockets& sockets;
};

/** A program's life with its devices. */
struct Life
{
    Life (Sockets& s, juce::String& kept)
        : manager (s),
          keeper (manager,
                  { [&kept] { return kept; }, [&kept] (const juce::String& choice) { kept = choice; } }, 10,
                  14)
    {
        keeper.start();
    }

    ~Life()
    {
        keeper.saveChoice();
        manager.closeAudioDevice();
    }

    juce::String now() { return manager.getAudioDeviceSetup().outputDeviceName; }

    /** The device after some seconds in which blocks were played. */
    juce::String after (int seconds)
    {
        for (int i = 0; i < seconds; ++i)
            keeper.look (++blocks);
        EXPECT_TRUE (keeper.isRunning());
        return now();
    }

    Manager manager;
    DeviceKeeper keeper;
    uint32_t blocks = 0;
};

struct Devices : testing::Test
{
    const juce::ScopedJuceInitialiser_GUI juceScope;
    juce::String kept;
    Sockets sockets { { "one", "two" } };
};
}

TEST_F (Devices, AChosenCardThatWasLostIsTakenUpAgain)
{
    Life life (sockets, kept);
    life.keeper.use ({ "Cards", "two" });
    EXPECT_EQ (life.after (1), "two");
    sockets.cards = { "one" };
    EXPECT_EQ (life.after (10), "one") << "plays meanwhile";
    const auto opened = sockets.opened;
    EXPECT_EQ (life.after (60), "one");
    EXPECT_EQ (sockets.opened, opened) << "what isn't there interrupts nothing";
    sockets.cards = {};
    EXPECT_EQ (life.after (1), "Silent");
    sockets.cards = { "one", "two" };
    EXPECT_EQ (life.after (5), "two");
}

TEST_F (Devices, TheChoiceOutlastsALifeWithoutTheCard)
{
    {
        Life life (sockets, kept);
        life.keeper.use ({ "Cards", "two" });
    }
    sockets.cards = {};
    {
        Life life (sockets, kept);
        EXPECT_EQ (life.after (5), "Silent");
    }
    sockets.cards = { "one", "two" };
    Life life (sockets, kept);
    EXPECT_EQ (life.after (1), "two");
}

TEST_F (Devices, WithoutAChoiceTheFirstCardThatComesIsTaken)
{
    sockets.cards = {};
    Life life (sockets, kept);
    EXPECT_EQ (life.now(), "Silent");
    sockets.cards = { "one" };
    EXPECT_EQ (life.after (5), "one");
    EXPECT_EQ (life.keeper.look (life.blocks), false);
    for (int i = 0; i < 3; ++i)
        life.keeper.look (life.blocks);
    EXPECT_EQ (life.after (1), "one") << "a card that stood still begins again";
}

TEST_F (Devices, CardsAreToldByTheirOutputs)
{
    Life life (sockets, kept);
    EXPECT_EQ (life.keeper.cardsWithOutputs (4), (std::vector<DeviceKeeper::Card> { { "Cards", "one" } }));
    EXPECT_EQ (life.keeper.cardsWithOutputs (2).size(), 2u);
}

#pragma once

#include <juce_audio_devices/juce_audio_devices.h>

#include <functional>
#include <memory>
#include <vector>

/** Keeps an audio device running: the one that was chosen, else the first that opens, at the latest the last of the
    manager's types, which must be one that always does. A chosen device that was lost, or is not there at the start, is
    taken up again when it is back.

    A choice is what a hand has chosen in the manager's dialog or by use(), and is kept; without one it is the first device
    that sounds. Message thread. */
class DeviceKeeper
{
public:
    /** The place of the choice: XML in one line, empty before the first. */
    struct Place
    {
        std::function<juce::String()> read;
        std::function<void (const juce::String&)> write;
    };

    /** @param manager   outlives this. Its last type is the silent one
        @param inputs, outputs   that are asked of a device */
    DeviceKeeper (juce::AudioDeviceManager& manager, Place, int inputs, int outputs);

    /** Opens the first device. */
    void start();

    /** Looks whether the device still runs and whether the chosen one is back; to be called once a second.
        @param blocks   that have been played since the program began: one that gives none is lost
        @returns true if another device runs now */
    bool look (uint32_t blocks);

    /** Keeps a choice that a hand has made since. */
    void saveChoice();

    /** True while the device runs. */
    bool isRunning() const;

    /** A device by its type's name and its own. */
    struct Card
    {
        juce::String type, name;
        bool operator== (const Card&) const = default;
    };

    /** Cards that have so many outputs. Asks each card, which may take some 100 ms. */
    std::vector<Card> cardsWithOutputs (int least);

    /** Chooses a card. */
    void use (const Card&);

    /** Looks from one to the next try to take up the chosen device; it doubles with each that fails, up to the last. */
    static constexpr int firstPause = 3, longestPause = 48;

private:
    Card current() const;
    Card chosen() const;
    juce::AudioIODeviceType* typeNamed (const juce::String&) const;
    bool isSilentType (const juce::String& name) const;
    void openFirstThatRuns();
    bool takeUpChosen();

    juce::AudioDeviceManager& devices;
    const Place place;
    const int inputs, outputs;
    Card firstThatSounded;
    uint32_t blocksSeen = 0;
    int stalledLooks = 0, looksSinceTry = 0, pause = firstPause;
};

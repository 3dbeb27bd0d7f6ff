#include "app/audio/AudioPage.h"

#include "support/language/Translate.h"
#include "ui/widgets/PXTextButton.h"

namespace
{
constexpr int boxWidth = 208, testWidth = 84, gap = 8;

/** The sources of a pair, by the number of its source less 1. */
constexpr const char* sources[] { N_ ("Nothing"), N_ ("Master"), N_ ("Headphones"), N_ ("Deck A"),
                                  N_ ("Deck B"),  N_ ("Deck C"), N_ ("Deck D"),     N_ ("Sampler") };
static_assert (std::size (sources) == OutputPairs::count + 1);

/** A pair of outputs: what it carries, and a button for its tone. */
class PairRow : public SettingRow
{
public:
    PairRow (OutputPairs& p, int number, std::function<void()> routed)
        : SettingRow (tr ("Outputs %1 and %2:", 2 * number + 1, 2 * number + 2)),
          pairs (p),
          pair (number)
    {
        hold (box, box, tr ("Chooses what is heard on this pair of outputs."));
        for (const auto* source : sources)
            box.addItem (tr (source), box.getNumItems() + 1);
        box.onChange = [this, routed = std::move (routed)]
        {
            if (const auto index = box.getSelectedItemIndex(); index >= 0)
            {
                pairs.setSource (pair, index + OutputPairs::silent);
                routed();
            }
        };
        hold (test, test, tr ("Plays a quiet tone on this pair: first on the left, then on the right."));
        test.setTitle (tr ("Test tone") + ", " + caption());
        test.onClick = [this] { pairs.playTone (pair); };
    }

    void refresh() override
    {
        if (!box.isPopupActive())
            box.setSelectedItemIndex (pairs.source (pair) - OutputPairs::silent, juce::dontSendNotification);
    }

private:
    void place (juce::Rectangle<int> area) override
    {
        box.setBounds (area.removeFromLeft (boxWidth));
        area.removeFromLeft (gap);
        test.setBounds (area.removeFromLeft (testWidth));
    }

    OutputPairs& pairs;
    const int pair;
    juce::ComboBox box;
    PXTextButton test { tr ("Test") };
};

juce::String milliseconds (int frames, double rate)
{
    return rate > 0.0 ? juce::String (1000.0 * frames / rate, 1) : juce::String ("-");
}

/** The time from the program to the socket and back, as the device tells it. */
juce::String latencyOf (juce::AudioDeviceManager& manager)
{
    auto* device = manager.getCurrentAudioDevice();
    if (device == nullptr)
        return {};
    const auto rate = device->getCurrentSampleRate();
    const auto block = device->getCurrentBufferSizeSamples();
    return tr ("%1 ms out, %2 ms in, a block lasts %3 ms",
               milliseconds (std::max (block, device->getOutputLatencyInSamples()), rate),
               milliseconds (std::max (block, device->getInputLatencyInSamples()), rate),
               milliseconds (block, rate));
}
}

AudioPage::AudioPage (juce::AudioDeviceManager& m, DeviceKeeper& k, OutputPairs& p, std::function<void()> r,
                      std::shared_ptr<Prompts> asker)
    : manager (m),
      keeper (k),
      pairs (p),
      routed (std::move (r)),
      prompts (std::move (asker))
{
    setSize (width, height);
    manager.addChangeListener (this);
    rebuild();
}

AudioPage::~AudioPage()
{
    manager.removeChangeListener (this);
}

void AudioPage::rebuild()
{
    const auto next = shape();
    if (next == builtShape)
        return refresh();
    builtShape = next;
    const auto* const focused = getCurrentlyFocusedComponent();
    const auto* const row = focused != nullptr ? focused->findParentComponentOfClass<SettingRow>() : nullptr;
    const auto held = row != nullptr && isParentOf (row) ? row->getComponentID() : juce::String();
    clearGroups();
    addGroup (tr ("Audio Device"));
    if (auto* type = manager.getCurrentDeviceTypeObject())
        addDevice (*type);
    auto* device = manager.getCurrentAudioDevice();
    const auto outputs = device != nullptr ? device->getActiveOutputChannels().countNumberOfSetBits() : 0;
    if (outputs > 0)
        addOutputs (outputs);
    resized();
    repaint();
    refresh();
    if (auto* again = held.isNotEmpty() ? findChildWithID (held) : nullptr; again != nullptr && isShowing())
        again->getChildComponent (0)->grabKeyboardFocus();
}

void AudioPage::addDevice (juce::AudioIODeviceType& type)
{
    const auto setupNow = [this] { return manager.getAudioDeviceSetup(); };
    juce::StringArray drivers;
    for (auto* each : manager.getAvailableDeviceTypes())
        drivers.add (each->getTypeName());
    addRow (ofChoice (
        "driver", tr ("Driver:"), tr ("The way to the cards. JACK shares one with other programs."), drivers,
        [this, drivers] { return drivers.indexOf (manager.getCurrentAudioDeviceType()); },
        [this] (int index)
        {
            auto* chosen = manager.getAvailableDeviceTypes()[index];
            chosen->scanForDevices();
            if (const auto cards = chosen->getDeviceNames (false); !cards.isEmpty())
                use ({ chosen->getTypeName(), cards[chosen->getDefaultDeviceIndex (false)] });
            else
                tell (tr ("%1 has no card here.", chosen->getTypeName()));
        }));

    const auto cards = type.getDeviceNames (false);
    addRow (ofChoice (
        "output", tr ("Output card:"), tr ("The card that is heard."), cards,
        [setupNow, cards] { return cards.indexOf (setupNow().outputDeviceName); },
        [this, cards, name = type.getTypeName()] (int index) {
            use ({ name, cards[index] });
        }));
    if (type.hasSeparateInputsAndOutputs())
    {
        auto inputs = type.getDeviceNames (true);
        inputs.insert (0, tr ("None"));
        addRow (ofChoice (
            "input", tr ("Input card:"), tr ("The card that control records and line inputs come from."),
            inputs,
            [setupNow, inputs]
            { return std::max (0, inputs.indexOf (setupNow().inputDeviceName, false, 1)); },
            [this, inputs] (int index) {
                change ([&] (auto& setup)
                        { setup.inputDeviceName = index > 0 ? inputs[index] : juce::String(); });
            }));
    }

    auto* device = manager.getCurrentAudioDevice();
    if (device == nullptr)
        return;
    juce::StringArray rates, sizes;
    for (const auto rate : device->getAvailableSampleRates())
        rates.add (juce::String (juce::roundToInt (rate)) + " Hz");
    for (const auto size : device->getAvailableBufferSizes())
        sizes.add (juce::String (size));
    addRow (ofChoice (
        "rate", tr ("Sample rate:"), tr ("Samples of the card in a second."), rates,
        [setupNow, rates]
        { return rates.indexOf (juce::String (juce::roundToInt (setupNow().sampleRate)) + " Hz"); },
        [this, rates] (int index)
        { change ([&] (auto& setup) { setup.sampleRate = rates[index].getDoubleValue(); }); }));
    addRow (ofChoice (
        "block", tr ("Block size:"),
        tr ("Samples that are computed at once. Few make the hand heard sooner, many spare the machine."),
        sizes, [setupNow, sizes] { return sizes.indexOf (juce::String (setupNow().bufferSize)); },
        [this, sizes] (int index)
        { change ([&] (auto& setup) { setup.bufferSize = sizes[index].getIntValue(); }); }));
    auto latency = SettingRows::text (tr ("Latency:"), [this] { return latencyOf (manager); });
    latency->setComponentID ("latency");
    addRow (std::move (latency));
}

void AudioPage::addOutputs (int outputs)
{
    addGroup (tr ("Outputs"));
    for (int pair = 0; pair < std::min (OutputPairs::count, (outputs + 1) / 2); ++pair)
    {
        auto row = std::make_unique<PairRow> (pairs, pair, routed);
        row->setComponentID ("pair" + juce::String (pair));
        addRow (std::move (row));
    }
}

std::unique_ptr<SettingRow> AudioPage::ofChoice (const char* id, const juce::String& caption,
                                                 const juce::String& tip, const juce::StringArray& entries,
                                                 std::function<int()> read, std::function<void (int)> write)
{
    auto row = SettingRows::choice (caption, tip,
                                    { [read = std::move (read)] { return static_cast<double> (read()); },
                                      [write = std::move (write)] (double index)
                                      { write (juce::roundToInt (index)); } },
                                    entries);
    row->setComponentID (id);
    return row;
}

/** All that the rows are made of, but for the values that they show. */
juce::String AudioPage::shape() const
{
    juce::String text = manager.getCurrentAudioDeviceType();
    if (auto* type = manager.getCurrentDeviceTypeObject())
        text << "\n"
             << type->getDeviceNames (false).joinIntoString ("\n") << "\n\n"
             << type->getDeviceNames (true).joinIntoString ("\n");
    if (auto* device = manager.getCurrentAudioDevice())
    {
        for (const auto rate : device->getAvailableSampleRates())
            text << "\n" << rate;
        for (const auto size : device->getAvailableBufferSizes())
            text << "\n" << size;
        text << "\n" << device->getActiveOutputChannels().countNumberOfSetBits();
    }
    return text;
}

void AudioPage::use (const DeviceKeeper::Card& card)
{
    keeper.use (card);
    if (manager.getAudioDeviceSetup().outputDeviceName != card.name
        || manager.getCurrentAudioDeviceType() != card.type)
        tell (tr ("%1 can't be opened.", card.name));
}

void AudioPage::change (const std::function<void (juce::AudioDeviceManager::AudioDeviceSetup&)>& alter)
{
    auto setup = manager.getAudioDeviceSetup();
    alter (setup);
    tell (manager.setAudioDeviceSetup (setup, true));
}

void AudioPage::tell (const juce::String& fault)
{
    if (fault.isNotEmpty() && prompts != nullptr)
        prompts->notify (tr ("Audio"), fault);
    refresh();
}

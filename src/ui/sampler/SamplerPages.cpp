#include "ui/sampler/SamplerPages.h"

#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/panel/PanelPaint.h"
#include "ui/sampler/OfferLoops.h"

namespace
{
using Kind = ControlSpec::Kind;
using Lit = ControlSpec::Lit;

constexpr ControlSpec recordControl { Kind::text,
                                      "_recButton",
                                      "SAMPLER_RECORD_LOOP",
                                      N_ ("REC"),
                                      N_ ("Record a loop sample of size X beats from the selected deck."),
                                      Lit::danger },
    playControl { Kind::text, "_playButton", "SAMPLER_PREVIEW_PLAY_STOP", N_ ("PLAY"),
                  N_ ("Play/Stop the loop sample in the recorder preview window.") },
    pflControl { Kind::sign, "_pflButton", "SAMPLER_PFL", "pfl_24",
                 N_ ("Send loop sampler to monitor bus.") },
    syncControl { Kind::text, "_syncButton", "SAMPLER_SYNC", N_ ("SYNC"),
                  N_ ("Play loop samples in sync with selected deck.") },
    volumeControl { Kind::level, "_masterVolumeSlider", "SAMPLER_MASTER_VOLUME", "crossfader_96",
                    N_ ("Loop sampler volume level. Double click to reset.") };

constexpr int margin = 4, gap = 4, row = 20, waveHeight = 32, padGap = 2, padsAcross = 4;

enum BankItem
{
    loadItem = 1,
    saveItem,
    firstUserBank = 1000
};

juce::StringArray deckNames (int decks)
{
    juce::StringArray names;
    for (int deck = 0; deck < decks; ++deck)
        names.add (tr ("Deck %1", PanelPaint::letterOf (deck)));
    return names;
}

juce::StringArray lengthNames()
{
    juce::StringArray names;
    for (int i = 0; i < GhostTake::lengthCount; ++i)
        names.add (i < 5 ? "1/" + juce::String (1 << (5 - i)) : juce::String (1 << (i - 5)));
    return names;
}
}

SamplerPage::SamplerPage (CPlatterdex& e, int d) : ControlPanel (e), decks (d), waveform (e)
{
    // A loop never comes from a deck that is not shown.
    if (engine.sampler.ghostDeck >= decks)
        engine.sampler.ghostDeck = 0;
    bankLabel.setName ("_bankLabel");
    bankLabel.setColour (juce::Label::textColourId, palette::value);
    bankLabel.setMinimumHorizontalScale (1.0f);
    bankLabel.setInterceptsMouseClicks (false, false);
    addAndMakeVisible (bankLabel);
    bankButton.setTooltip (tr ("Load / Save Sample Bank"));
    bankButton.onFillMenu = [this] (auto& menu) { fillBankMenu (menu); };
    bankButton.onMenuChoice = [this] (int item) { chooseFromBankMenu (item); };
    addAndMakeVisible (bankButton);

    makeCombo (deckBox, tr ("Select the deck source for the real time loop sample recording function."),
               deckNames (decks),
               [this] (int deck) { engine.sampler.ghostDeck = static_cast<int8_t> (deck); });
    makeCombo (
        lengthBox,
        tr ("Select the lenght of audio to be recorder from the selected deck, measured in number of beats."),
        lengthNames(), [this] (int length) { engine.sampler.ghostLength = static_cast<int8_t> (length); });
    addAndMakeVisible (waveform);

    recordButton = addControl (recordControl, -1, {});
    playButton = addControl (playControl, -1, {});
    pflButton = addControl (pflControl, -1, {});
    syncButton = addControl (syncControl, -1, {});
    volumeSlider = addControl (volumeControl, -1, {});
    for (int pad = 0; pad < Sampler::padCount; ++pad)
    {
        auto& made = pads[static_cast<size_t> (pad)];
        made = std::make_unique<SamplerPad> (engine, pad);
        addAndMakeVisible (*made);
    }
}

void SamplerPage::makeCombo (juce::ComboBox& box, const juce::String& tooltip,
                             const juce::StringArray& entries, std::function<void (int)> choose)
{
    box.setTooltip (tooltip);
    box.setTitle (tooltip);
    box.addItemList (entries, 1);
    box.onChange = [&box, choose = std::move (choose)] { choose (box.getSelectedItemIndex()); };
    addAndMakeVisible (box);
}

void SamplerPage::resized()
{
    auto area = getLocalBounds().reduced (margin);
    const auto take = [&] (int height)
    {
        const auto taken = area.removeFromTop (height);
        area.removeFromTop (gap);
        return taken;
    };
    auto top = take (row);
    bankButton.setBounds (top.removeFromRight (64));
    bankLabel.setBounds (top.withTrimmedRight (gap));

    auto recorder = take (row);
    const auto part = [&] (int width)
    {
        const auto taken = recorder.removeFromLeft (width);
        recorder.removeFromLeft (gap);
        return taken;
    };
    deckBox.setBounds (part (62));
    lengthBox.setBounds (part (54));
    const auto button = (recorder.getWidth() - gap) / 2;
    recordButton->setBounds (part (button));
    playButton->setBounds (recorder);
    waveform.setBounds (take (waveHeight));

    auto bottom = area.removeFromBottom (24);
    area.removeFromBottom (gap);
    pflButton->setBounds (bottom.removeFromLeft (24));
    bottom.removeFromLeft (gap);
    syncButton->setBounds (bottom.removeFromLeft (52).withSizeKeepingCentre (52, row));
    bottom.removeFromLeft (2 * gap);
    volumeSlider->setBounds (bottom);

    const auto width = (area.getWidth() - (padsAcross - 1) * padGap) / padsAcross;
    const auto height = (area.getHeight() - (padsAcross - 1) * padGap) / padsAcross;
    for (int pad = 0; pad < Sampler::padCount; ++pad)
        pads[static_cast<size_t> (pad)]->setBounds (area.getX() + pad % padsAcross * (width + padGap),
                                                    area.getY() + pad / padsAcross * (height + padGap), width,
                                                    height);
}

void SamplerPage::paint (juce::Graphics& g)
{
    ControlPanel::paint (g);
    // The boxes are the look's ghosts: their ground lies behind them.
    for (const auto* box : { &deckBox, &lengthBox })
    {
        g.setColour (palette::well);
        g.fillRoundedRectangle (box->getBounds().toFloat(), 2.0f);
        PanelPaint::value (g, box->getText(), box->getBounds().reduced (6, 0).withTrimmedRight (12),
                           juce::Justification::centredLeft);
    }
}

void SamplerPage::pollMoving()
{
    ControlPanel::pollMoving();
    waveform.poll();
    for (auto& pad : pads)
        pad->poll();
    const auto follow = [this] (juce::ComboBox& box, int index)
    {
        if (box.getSelectedItemIndex() == index)
            return;
        box.setSelectedItemIndex (index, juce::dontSendNotification);
        repaint (box.getBounds());
    };
    follow (deckBox, juce::jlimit (0, decks - 1, static_cast<int> (engine.sampler.ghostDeck.get())));
    follow (lengthBox, engine.sampler.ghostLength.get());
    if (const auto name = engine.sampler.bankName(); name != bankLabel.getText())
        bankLabel.setText (name, juce::dontSendNotification);
}

void SamplerPage::fillBankMenu (juce::PopupMenu& menu)
{
    const auto asks = engine.environment.prompts != nullptr;
    menu.addItem (loadItem, tr ("Load Bank"), asks);
    menu.addItem (saveItem, tr ("Save Bank"), asks);
    userBanks = engine.sampler.folders.samples().findChildFiles (juce::File::findFiles, false, "*.xml");
    userBanks.sort();
    if (userBanks.isEmpty())
        return;
    menu.addSeparator();
    menu.addSectionHeader (tr ("Presets:"));
    juce::PopupMenu banks;
    for (int i = 0; i < userBanks.size(); ++i)
        banks.addItem (firstUserBank + i, userBanks[i].getFileNameWithoutExtension());
    menu.addSubMenu (tr ("User Banks"), banks);
}

void SamplerPage::chooseFromBankMenu (int item)
{
    if (item == saveItem)
        return saveBank();
    if (item >= firstUserBank)
        return loadBank (userBanks[item - firstUserBank]);
    engine.environment.prompts->askFile (
        { tr ("Select a bank file"), engine.sampler.folders.samples(), "*.xml" },
        [safe = juce::Component::SafePointer<SamplerPage> (this)] (const auto& file)
        {
            if (safe != nullptr && file != juce::File())
                safe->loadBank (file);
        });
}

void SamplerPage::loadBank (const juce::File& file)
{
    const auto load = [&engine = engine, file]
    {
        if (const auto fault = engine.sampler.loadBank (file);
            fault.isNotEmpty() && engine.environment.prompts != nullptr)
            engine.environment.prompts->notify (tr ("Load Bank"), fault);
    };
    offerRecordedLoops (engine, load); // which the bank takes off their pads
}

void SamplerPage::saveBank()
{
    engine.environment.prompts->askFile (
        { tr ("Save the bank file as..."),
          engine.sampler.folders.samples().getChildFile ("userSampleBank.xml"), "*.xml", true },
        [this, safe = juce::Component::SafePointer<SamplerPage> (this)] (const juce::File& file)
        {
            if (safe == nullptr || file == juce::File())
                return;
            const auto target =
                file.hasFileExtension ("xml") ? file : juce::File (file.getFullPathName() + ".xml");
            if (const auto fault = engine.sampler.saveBank (target); fault.isNotEmpty())
                engine.environment.prompts->notify (tr ("Save Bank"), fault);
        });
}

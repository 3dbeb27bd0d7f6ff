#pragma once

#include "support/language/Translate.h"
#include "ui/panel/ControlPanel.h"
#include "ui/sampler/SamplerPad.h"
#include "ui/sampler/SamplerWaveform.h"
#include "ui/widgets/MenuButton.h"

#include <array>

/** The page "SAMPLER": bank, loop recorder, sixteen pads, level. */
class SamplerPage : public ControlPanel
{
public:
    void resized() override;
    void paint (juce::Graphics&) override;

protected:
    /** @param decks   that loops can be taken from, 2 or 4 */
    SamplerPage (CPlatterdex&, int decks);

private:
    void pollMoving() override;
    void fillBankMenu (juce::PopupMenu&);
    void chooseFromBankMenu (int item);
    void loadBank (const juce::File&);
    void saveBank();
    void makeCombo (juce::ComboBox&, const juce::String& tooltip, const juce::StringArray& entries,
                    std::function<void (int)> choose);

    const int decks;
    juce::Label bankLabel;
    MenuButton bankButton { tr ("BANK") };
    juce::ComboBox deckBox { "_ghostComboBox" }, lengthBox { "_ghostComboBox" };
    SamplerWaveform waveform;
    std::array<std::unique_ptr<SamplerPad>, Sampler::padCount> pads;
    juce::Component *recordButton, *playButton, *pflButton, *syncButton, *volumeSlider;
    juce::Array<juce::File> userBanks;
};

class Sampler2DecksComponent : public SamplerPage
{
public:
    explicit Sampler2DecksComponent (CPlatterdex& e) : SamplerPage (e, 2) {}
};

class Sampler4DecksComponent : public SamplerPage
{
public:
    explicit Sampler4DecksComponent (CPlatterdex& e) : SamplerPage (e, 4) {}
};

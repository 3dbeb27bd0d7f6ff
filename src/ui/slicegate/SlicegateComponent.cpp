#include "ui/slicegate/SlicegateComponent.h"

#include "engine/CPlatterdex.h"
#include "instruments/contents/SlicegateBank.h"
#include "settings/SettingsFolder.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/look/ShortText.h"
#include "ui/panel/PanelPaint.h"

namespace
{
constexpr int columns = 4, left = 4, firstRow = 26;
constexpr juce::Point<int> badgePlace { 4, 4 };
const juce::Rectangle<int> nameArea { 28, 4, 112, 20 }, bankArea { 144, 4, 68, 20 };
}

SlicegateComponent::SlicegateComponent (CPlatterdex& e, int d)
    : ControlPanel (e),
      deck (d),
      badge (e, d),
      bankFiles (
          { "Slicegate", tr ("Select a bank of pads..."), tr ("Save the bank of pads...") },
          [&e]
          {
              return folderOf (e.settings.slicegateFolder, e.environment.folders.slicegateFiles())
                  .getChildFile ("banks");
          },
          e.environment.prompts.get())
{
    badge.setTopLeftPosition (badgePlace);
    addAndMakeVisible (badge);
    for (int i = 0; i < padCount; ++i)
    {
        auto& made = own (std::make_unique<SlicegatePad> (e, d, i));
        made.setTopLeftPosition (left + i % columns * SlicegatePad::width,
                                 firstRow + i / columns * SlicegatePad::height);
        pads[static_cast<size_t> (i)] = &made;
    }
    auto& bank = own (std::make_unique<MenuButton> (tr ("BANK")));
    bank.setComponentID ("_slicegateBankButton");
    bank.setTooltip (tr ("Loads, saves or clears all eight pads of the deck"));
    bank.setBounds (bankArea);
    bank.onFillMenu = [this] (juce::PopupMenu& menu)
    {
        menu.addItem (loadAll, tr ("Load all pads..."), bankFiles.canAsk());
        menu.addItem (saveAll, tr ("Save all pads..."), bankFiles.canAsk());
        menu.addSeparator();
        menu.addItem (clearAll, tr ("Clear all pads"));
    };
    bank.onMenuChoice = [this] (int id) { chooseBank (id); };
}

void SlicegateComponent::chooseBank (int item)
{
    auto& state = engine.slicegates[static_cast<size_t> (deck)];
    if (item == loadAll)
        bankFiles.askToLoad ([&state] (const juce::File& file) { return loadBank (state, file); });
    else if (item == saveAll)
        bankFiles.askToSave ("Bank " + PanelPaint::letterOf (deck),
                             [&state] (const juce::File& file)
                             {
                                 if (const auto made = file.getParentDirectory().createDirectory();
                                     made.failed())
                                     return tr ("The folder of the banks can't be made.").toStdString();
                                 return saveBank (state, file);
                             });
    else if (item == clearAll)
        for (int pad = 0; pad < padCount; ++pad)
            state.loadFactoryPreset (FactoryPresets::emptyPreset, pad);
}

void SlicegateComponent::pollMoving()
{
    pollControls();
    const auto& state = engine.slicegates[static_cast<size_t> (deck)];
    juce::String now;
    for (int i = 0; i < padCount; ++i)
        if (state.padState (i) == PadState::running)
            now = PadMenu::nameOf (engine, deck, i);
    now = shortText (now, SMLookAndFeel::font (SMLookAndFeel::valueSize), nameArea.getWidth());
    if (std::exchange (running, now) != now)
        repaint (nameArea);
}

void SlicegateComponent::paint (juce::Graphics& g)
{
    ControlPanel::paint (g);
    PanelPaint::value (g, running, nameArea, juce::Justification::centredLeft);
    g.setColour (palette::edgeDark);
    g.fillRect (getLocalBounds().removeFromBottom (1));
}

#include "ui/plugins/PluginScannerComponent.h"
#include "ui/plugins/VstSlotComponent.h"

#include "../../engine/EngineFixture.h"

#include <gtest/gtest.h>

namespace
{
/** An engine with slots, to which four of the tests' plug-ins are known; one of them has crashed. */
struct PanelBench
{
    PanelBench()
    {
        VstSlots::Options options { .scanner = { .program = juce::File (PX_SCANNER), .disablePopups = true },
                                    .keepsSlots = false,
                                    .hasMessageLoop = false };
        slots = std::make_unique<VstSlots> (*fixture.engine, options);
        for (const auto* plugin : { "delay", "crash_scan", "gain", "mono" })
            juce::ignoreUnused (slots->loadNow (0, juce::String (PX_EVIL_PLUGINS) + "/" + plugin + ".so"));
    }

    EngineFixture fixture;
    std::unique_ptr<VstSlots> slots;
};
}

TEST (VstSlotPanel, LoadsThePluginThatAnItemOfItsMenuNames)
{
    PanelBench bench;
    VstSlotComponent panel (*bench.fixture.engine, 2);
    juce::PopupMenu menu;
    panel.fillPluginMenu (menu);
    juce::StringArray loaded;
    for (juce::PopupMenu::MenuItemIterator item (menu, true); item.next();)
        if (const auto id = item.getItem().itemID; id >= VstSlots::emptyMenuEntries && id < 100)
        {
            panel.choosePlugin (id);
            EXPECT_EQ (bench.slots->name (2), item.getItem().text);
            loaded.add (bench.slots->name (2));
        }
    // A scan that goes on while the menu is open moves no item to another plug-in.
    auto first = bench.slots->known->entries().front();
    first.description.name = "a";
    first.file = "/a.so";
    bench.slots->known->put (first.file, { first });
    panel.choosePlugin (VstSlots::emptyMenuEntries);
    EXPECT_EQ (bench.slots->name (2), loaded[0]);
    loaded.sort (false);
    EXPECT_EQ (loaded.joinIntoString (" "), "delay gain mono") << "what has crashed is not offered";
    panel.choosePlugin (1);
    EXPECT_EQ (bench.slots->name (2), "Empty");
}

TEST (VstSlotPanel, OffersThePresetsOfItsPlugin)
{
    PanelBench bench;
    auto& slots = *bench.slots;
    VstSlotComponent panel (*bench.fixture.engine, 0);
    ASSERT_EQ (slots.loadNow (0, juce::String (PX_EVIL_PLUGINS) + "/programs.so"), "");
    const auto offered = [&panel] (juce::Array<int>& ids)
    {
        juce::PopupMenu menu;
        panel.fillPluginMenu (menu);
        juce::StringArray presets;
        ids.clear();
        for (juce::PopupMenu::MenuItemIterator item (menu, true); item.next();)
            if (const auto& each = item.getItem(); each.itemID >= 100'000 && each.itemID < 200'000)
            {
                presets.add (each.text + (each.isTicked ? "*" : ""));
                ids.add (each.itemID);
            }
        return presets.joinIntoString (", ");
    };
    juce::Array<int> ids;
    EXPECT_EQ (offered (ids), "Sound 0*, 2, 3") << "one without a name has its number";
    ASSERT_EQ (ids.size(), 3);
    panel.choosePlugin (ids[2]);
    EXPECT_EQ (slots.plugin (0)->getCurrentProgram(), 2);
    EXPECT_EQ (offered (ids), "1, 2, Sound 2*");
    for (auto* child : panel.getChildren())
        if (child->getName() == "_laterPresetButton")
            dynamic_cast<PXImageButton&> (*child).onClick();
    EXPECT_EQ (slots.plugin (0)->getCurrentProgram(), 0) << "the last is followed by the first";
}

TEST (VstSlotPanel, TiesItsKnobsToParametersByTheirMenus)
{
    PanelBench bench;
    auto& slots = *bench.slots;
    VstSlotComponent panel (*bench.fixture.engine, 1);
    ASSERT_EQ (slots.loadNow (1, "gain"), "");
    for (int which = 0; which < VstSlots::paramsPerSlot; ++which)
    {
        juce::PopupMenu menu;
        panel.fillParameterMenu (menu, which);
        auto* const box = dynamic_cast<MenuButton*> (
            panel.findChildWithID ("_param" + juce::String (which + 1) + "ComboBox"));
        ASSERT_NE (box, nullptr);
        for (juce::PopupMenu::MenuItemIterator item (menu, true); item.next();)
        {
            box->onMenuChoice (item.getItem().itemID);
            const auto index = slots.paramIndex (1, which);
            EXPECT_EQ (index < 0 ? juce::String ("Not Assigned")
                                 : slots.plugin (1)->getParameters()[index]->getName (32),
                       item.getItem().text);
        }
    }
}

TEST (PluginScannerDialog, OffersToSkipForAsLongAsAPluginHangs)
{
    PanelBench bench;
    PluginScannerComponent dialog (*bench.slots);
    auto* const panel = [&dialog]() -> HangingPluginComponent*
    {
        for (auto* child : dialog.getChildren())
            if (auto* const found = dynamic_cast<HangingPluginComponent*> (child))
                return found;
        return nullptr;
    }();
    ASSERT_NE (panel, nullptr);
    using Kind = ScanMessage::Kind;
    for (const auto& [kind, flag, isOffered] : { std::tuple { Kind::started, false, false },
                                                 { Kind::hanging, true, true },
                                                 { Kind::hanging, false, false },
                                                 { Kind::hanging, true, true },
                                                 { Kind::allDone, true, false } })
    {
        dialog.show ({ kind, {}, IPCPluginScanner::Outcome::found, flag, 0.5 });
        EXPECT_EQ (panel->isVisible(), isOffered);
    }
}

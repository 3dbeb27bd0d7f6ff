#include "ui/plugins/VstSlotComponent.h"

#include "engine/CPlatterdex.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/panel/PanelPaint.h"
#include "ui/plugins/VstPluginsPreferencesPage.h"

#include <map>

namespace
{
using Kind = ControlSpec::Kind;
using Lit = ControlSpec::Lit;

constexpr const char* routing = "VST_INSERT_SEND_SIGNAL_ROUTING_SLOT_";

constexpr const char* knobNames[] { "_param1Slider", "_param2Slider" };

// clang-format off
constexpr PlacedControl table[] {
    { { Kind::sign, "_enableButton", "VST_ON_SLOT_",      "power_24", N_ ("Turns on/off the VST plugin.") }, { 4, 36, 24, 24 } },
    { { Kind::knob, "_dryWetSlider", "VST_DRY_WET_SLOT_", "",   N_ ("Sets balance between the original sound and VST plugin.") }, { 102, 34, 28, 28 } },
    { { Kind::knob, knobNames[0], "VST_PARAM_1_SLOT_", "",   N_ ("Sets parameter value of the VST plugin.") }, { 136, 62, 28, 28 } },
    { { Kind::knob, knobNames[1], "VST_PARAM_2_SLOT_", "",   N_ ("Sets parameter value of the VST plugin.") }, { 136, 90, 28, 28 } },
};
// clang-format on

constexpr juce::Point<int> badgePlace { 4, 8 };
const juce::Rectangle<int> pluginArea { 28, 6, 92, 24 }, formerArea { 121, 7, 22, 22 },
    laterArea { 144, 7, 22, 22 }, editorArea { 167, 6, 46, 24 }, routingArea { 36, 36, 58, 24 },
    dryWetWord { 131, 36, 26, 24 }, latencyArea { 158, 36, 56, 24 };

juce::Rectangle<int> parameterArea (int which)
{
    return { 4, 64 + 28 * which, 128, 24 };
}

juce::Rectangle<int> valueArea (int which)
{
    return { 166, 64 + 28 * which, 48, 24 };
}

/** Items of the plug-in's menu beside its plug-ins, which have the numbers of VstSlots::loadVstPlugin(). */
enum MenuItem
{
    emptyItem = 1,
    firstPresetItem = 100'000,
    onMasterItem = 200'000,
    parametersItem,
    scanItem
};

constexpr int longestName = 24;
}

VstSlotComponent::VstSlotComponent (CPlatterdex& e, int d)
    : ControlPanel (e),
      deck (d),
      slots (VstSlots::of (e)),
      badge (e, d)
{
    badge.setTopLeftPosition (badgePlace);
    addAndMakeVisible (badge);
    addControls (table, deck);
    addLabel (tr ("WET"), dryWetWord, juce::Justification::centredLeft);
    routingButton = dynamic_cast<juce::Button*> (
        addControl ({ Kind::text, "_routingButton", routing, N_ ("SEND"),
                      N_ ("Set VST audio routing mode (send/insert)."), Lit::plain },
                    deck, routingArea));

    pluginButton.setComponentID ("_pluginComboBox");
    pluginButton.setTooltip (tr ("Select VST plugin from the drop down menu."));
    pluginButton.setBounds (pluginArea);
    pluginButton.onFillMenu = [this] (juce::PopupMenu& menu) { fillPluginMenu (menu); };
    pluginButton.onMenuChoice = [this] (int item) { choosePlugin (item); };
    editorButton.setComponentID ("_editorButton");
    editorButton.setTooltip (tr ("Shows the VST plugin editor."));
    editorButton.setBounds (editorArea);
    editorButton.onClick = [this] { showWindow (PluginWindow::Content::own); };
    for (auto* each : std::initializer_list<juce::Component*> { &pluginButton, &editorButton, &formerButton,
                                                                &laterButton })
        addAndMakeVisible (*each);
    const auto makeStep = [this] (PXImageButton& button, const char* strip, const juce::String& tip, int step,
                                  juce::Rectangle<int> area)
    {
        button.setStrip (strip);
        button.setTooltip (tip);
        button.setBounds (area);
        button.onClick = [this, step] { stepPreset (step); };
    };
    makeStep (formerButton, "left_20", tr ("Former preset of the plug-in"), -1, formerArea);
    makeStep (laterButton, "right_20", tr ("Next preset of the plug-in"), 1, laterArea);
    for (int which = 0; which < VstSlots::paramsPerSlot; ++which)
    {
        auto& button = parameterButtons[static_cast<size_t> (which)];
        button.setComponentID ("_param" + juce::String (which + 1) + "ComboBox");
        button.setTooltip (tr ("Select VST parameter from the drop down menu."));
        button.setBounds (parameterArea (which));
        button.onFillMenu = [this, which] (juce::PopupMenu& menu) { fillParameterMenu (menu, which); };
        button.onMenuChoice = [this, which] (int item)
        {
            slots->setParamIndex (deck, which, item - 2); // 1 is "Not Assigned", -1
            refresh();
        };
        addAndMakeVisible (button);
    }
    if (slots != nullptr)
        slots->addListener (*this);
}

VstSlotComponent::~VstSlotComponent()
{
    window.reset();
    if (VstSlots::of (engine) != nullptr)
        slots->removeListener (*this);
}

void VstSlotComponent::pluginLeaves (int leftDeck)
{
    if (leftDeck == deck)
        window.reset();
}

//======================================================================================================================
// Menus

void VstSlotComponent::fillPluginMenu (juce::PopupMenu& menu)
{
    const auto current = slots->name (deck);
    menu.addItem (emptyItem, tr ("Empty"), true, slots->plugin (deck) == nullptr);
    menu.addSeparator();
    // By format and maker: a machine has hundreds.
    std::map<juce::String, std::map<juce::String, juce::PopupMenu>> groups;
    offered = slots->known->usable();
    for (int i = 0; i < static_cast<int> (offered.size()); ++i)
    {
        const auto& plugin = offered[static_cast<size_t> (i)].description;
        const auto maker = plugin.manufacturerName.isEmpty() ? tr ("Others") : plugin.manufacturerName;
        groups[plugin.pluginFormatName][maker].addItem (VstSlots::emptyMenuEntries + i, plugin.name, true,
                                                        plugin.name == current);
    }
    for (auto& [format, makers] : groups)
    {
        menu.addSectionHeader (format);
        for (auto& [maker, plugins] : makers)
            menu.addSubMenu (maker, plugins);
    }
    if (offered.empty())
        menu.addItem (-1, tr ("No plug-ins are known yet"), false);
    menu.addSeparator();
    if (auto* const plugin = slots->plugin (deck))
    {
        juce::PopupMenu presets;
        for (int i = 0; i < plugin->getNumPrograms(); ++i)
        {
            const auto preset = plugin->getProgramName (i).trim(); // some name only the one that they play
            presets.addItem (firstPresetItem + i, preset.isNotEmpty() ? preset : juce::String (i + 1), true,
                             i == plugin->getCurrentProgram());
        }
        if (presets.getNumItems() > 1)
            menu.addSubMenu (tr ("Presets of the plug-in"), presets);
        menu.addItem (parametersItem, tr ("All parameters..."));
    }
    menu.addItem (onMasterItem, tr ("Apply VST slot %1 to master output", PanelPaint::letterOf (deck)), true,
                  engine.settings.deckSetup[static_cast<size_t> (deck)].vstOnMaster != 0);
    menu.addItem (scanItem, tr ("Scan for plug-ins..."));
}

void VstSlotComponent::choosePlugin (int item)
{
    if (item == scanItem)
    {
        if (auto* const windows = ToolWindows::of (*this))
            VstPluginsPreferencesPage::open (*windows, *this, *slots);
    }
    else if (item == parametersItem)
        showWindow (PluginWindow::Content::parameters);
    else if (item == onMasterItem)
    {
        auto& flag = engine.settings.deckSetup[static_cast<size_t> (deck)].vstOnMaster;
        flag = static_cast<int8_t> (flag == 0);
    }
    else if (item >= firstPresetItem)
        slots->choosePreset (deck, item - firstPresetItem);
    else
        slots->loadVstPlugin (deck, item, offered);
    refresh();
}

void VstSlotComponent::stepPreset (int step)
{
    auto* const plugin = slots != nullptr ? slots->plugin (deck) : nullptr;
    if (plugin == nullptr || plugin->getNumPrograms() < 2)
        return;
    const auto count = plugin->getNumPrograms();
    slots->choosePreset (deck, (plugin->getCurrentProgram() + step + count) % count);
}

void VstSlotComponent::fillParameterMenu (juce::PopupMenu& menu, int which) const
{
    const auto current = slots->paramIndex (deck, which);
    menu.addItem (1, tr ("Not Assigned"), true, current < 0);
    if (auto* const plugin = slots->plugin (deck))
        for (const auto* parameter : plugin->getParameters())
            menu.addItem (parameter->getParameterIndex() + 2, parameter->getName (longestName), true,
                          parameter->getParameterIndex() == current);
}

void VstSlotComponent::showWindow (PluginWindow::Content content)
{
    auto* const plugin = slots != nullptr ? slots->plugin (deck) : nullptr;
    if (plugin == nullptr)
        return;
    window.reset();
    window = std::make_unique<PluginWindow> (
        *plugin, tr ("%1 - Deck %2", slots->name (deck), PanelPaint::letterOf (deck)), content,
        // Deleted when its own click has ended.
        [here = SafePointer (this)]
        {
            juce::MessageManager::callAsync (
                [here]
                {
                    if (auto* const self = here.getComponent())
                    {
                        self->window.reset();
                        self->slots->save();
                    }
                });
        });
}

//======================================================================================================================
// Looks

juce::String VstSlotComponent::pluginText() const
{
    if (slots == nullptr)
        return tr ("Empty");
    return slots->isLoading (deck) ? tr ("Loading...") : slots->name (deck);
}

juce::String VstSlotComponent::parameterName (int which) const
{
    const auto* const plugin = slots != nullptr ? slots->plugin (deck) : nullptr;
    const auto* const parameter =
        plugin != nullptr ? plugin->getParameters()[slots->paramIndex (deck, which)] : nullptr;
    return parameter != nullptr ? parameter->getName (longestName) : tr ("Not Assigned");
}

juce::String VstSlotComponent::parameterText (int which) const
{
    constexpr int longestText = 8;
    const auto* const plugin = slots != nullptr ? slots->plugin (deck) : nullptr;
    const auto* const parameter =
        plugin != nullptr ? plugin->getParameters()[slots->paramIndex (deck, which)] : nullptr;
    if (parameter == nullptr)
        return PanelPaint::dash();
    const auto text = parameter->getCurrentValueAsText().trim();
    if (text.containsChar ('.') && text.containsOnly ("-.0123456789"))
        return juce::String (text.getDoubleValue(), 2); // some give all digits that they have
    return text.isNotEmpty() ? text.substring (0, longestText)
                             : juce::String (juce::roundToInt (100.0f * parameter->getValue())) + " %";
}

juce::String VstSlotComponent::latencyText() const
{
    const auto frames = slots != nullptr ? slots->latency (deck) : 0;
    if (frames == 0)
        return {};
    const auto ms = 1000.0 * frames / engine.decks.engineRate;
    const auto text = juce::String (ms, ms < 10.0 ? 1 : 0) + " ms";
    return VstSlots::isCompensated (frames) ? text : tr ("LATE %1", text);
}

void VstSlotComponent::pollMoving()
{
    pollControls();
    for (int which = 0; which < VstSlots::paramsPerSlot; ++which)
        if (auto text = parameterText (which); text != shownValues[static_cast<size_t> (which)])
        {
            shownValues[static_cast<size_t> (which)] = std::move (text);
            repaint (valueArea (which));
        }
    if (routingButton != nullptr)
        routingButton->setButtonText (
            engine.vstSlots[static_cast<size_t> (deck)].isInsert != 0 ? "INSERT" : tr ("SEND"));
}

void VstSlotComponent::pollCalm()
{
    const auto hasPlugin = slots != nullptr && slots->plugin (deck) != nullptr;
    pluginButton.setEnabled (slots != nullptr);
    pluginButton.setButtonText (pluginText());
    editorButton.setEnabled (hasPlugin);
    for (auto* child : getChildren())
        for (int which = 0; which < VstSlots::paramsPerSlot; ++which)
            if (child->getName() == knobNames[which])
                child->setEnabled (hasPlugin && slots->paramIndex (deck, which) >= 0);
    const auto hasPresets = hasPlugin && slots->plugin (deck)->getNumPrograms() > 1;
    formerButton.setEnabled (hasPresets);
    laterButton.setEnabled (hasPresets);
    for (int which = 0; which < VstSlots::paramsPerSlot; ++which)
    {
        auto& button = parameterButtons[static_cast<size_t> (which)];
        button.setEnabled (hasPlugin);
        button.setButtonText (parameterName (which));
    }
    if (auto text = latencyText(); text != shownLatency)
    {
        shownLatency = std::move (text);
        repaint (latencyArea);
    }
}

void VstSlotComponent::paint (juce::Graphics& g)
{
    ControlPanel::paint (g);
    for (int which = 0; which < VstSlots::paramsPerSlot; ++which)
        PanelPaint::value (g, shownValues[static_cast<size_t> (which)], valueArea (which),
                           juce::Justification::centredLeft);
    PanelPaint::label (g, shownLatency, latencyArea, juce::Justification::centredLeft);
    g.setColour (palette::edgeDark);
    g.fillRect (getLocalBounds().removeFromBottom (1));
}

#include "ui/slicegate/PadMenu.h"

#include "engine/CPlatterdex.h"
#include "settings/SettingsFolder.h"
#include "support/language/Translate.h"
#include "ui/slicegate/SlicegateEditorComponent.h"

namespace
{
constexpr std::array playModes { N_ ("One Shot"), N_ ("Re-Trigger"), N_ ("Loop") };
}

PadMenu::PadMenu (CPlatterdex& e, int d, int p) : engine (e), deck (d), pad (p), userFiles (files (e)) {}

SlicegateDeckState& PadMenu::state() const
{
    return engine.slicegates[static_cast<size_t> (deck)];
}

PresetFiles PadMenu::files (CPlatterdex& engine)
{
    return { { "Slicegate", tr ("Select a slicegate preset file..."), tr ("Save the slicegate preset...") },
             [&engine] {
                 return folderOf (engine.settings.slicegateFolder,
                                  engine.environment.folders.slicegateFiles());
             },
             engine.environment.prompts.get() };
}

juce::String PadMenu::nameOf (CPlatterdex& engine, int deck, int pad)
{
    const auto name = engine.slicegates[static_cast<size_t> (deck)].padName (pad);
    return name.empty() ? tr ("Empty") : juce::String::fromUTF8 (name.c_str());
}

void PadMenu::fill (juce::PopupMenu& menu)
{
    menu.addSectionHeader (tr ("Presets:"));
    for (const auto* group : FactoryPresets::menu())
    {
        juce::PopupMenu presets;
        for (const auto& entry : group->presets)
            presets.addItem (entry.id, juce::String (std::string (entry.name)));
        menu.addSubMenu (juce::String (std::string (group->name)), presets);
    }
    menu.addSubMenu (tr ("User files"), userFiles.menu());
    menu.addSeparator();
    menu.addItem (load, tr ("Load"), userFiles.canAsk());
    menu.addItem (save, tr ("Save"), userFiles.canAsk());
    menu.addItem (rename, tr ("Rename"), userFiles.canAsk());
    menu.addItem (clear, tr ("Clear"));
    menu.addSeparator();
    menu.addItem (edit, tr ("Show Editor"));
    menu.addSectionHeader (tr ("Play Mode:"));
    for (size_t mode = 0; mode < playModes.size(); ++mode)
        menu.addItem (firstMode + static_cast<int> (mode), tr (playModes[mode]), true,
                      static_cast<size_t> (state().playMode (pad)) == mode);
    menu.addSectionHeader (tr ("Advance Mode:"));
    menu.addItem (rolling, tr ("Rolling / March"), true, state().advanceMode (pad));
}

void PadMenu::choose (int id, juce::Component& opener)
{
    auto& s = state();
    const auto loadFile = [&s, p = pad] (const juce::File& file) { return s.importPreset (file, p); };
    switch (id)
    {
    case load:
        return userFiles.askToLoad (loadFile);
    case save:
        return userFiles.askToSave (nameOf (engine, deck, pad), [&s, p = pad] (const juce::File& file)
                                    { return s.exportPreset (file, p); });
    case rename:
        return engine.environment.prompts->askText (tr ("Enter Preset Name"),
                                                    tr ("Please enter preset name for the pad."),
                                                    nameOf (engine, deck, pad),
                                                    [&s, p = pad] (const std::optional<juce::String>& name)
                                                    {
                                                        if (name)
                                                            s.setPadName (p, name->trim().toStdString());
                                                    });
    case clear:
        return s.loadFactoryPreset (FactoryPresets::emptyPreset, pad);
    case edit:
        return SlicegateEditorComponent::open (engine, deck, pad, opener);
    case rolling:
        return s.setAdvanceMode (pad, !s.advanceMode (pad));
    default:
        break;
    }
    if (id >= firstMode && id < firstMode + static_cast<int> (playModes.size()))
        s.setPlayMode (pad, static_cast<PlayMode> (id - firstMode));
    else if (id >= PresetFiles::firstId)
        userFiles.load (userFiles.fileOf (id), loadFile);
    else if (id >= FactoryPresets::firstId)
        s.loadFactoryPreset (id, pad);
}

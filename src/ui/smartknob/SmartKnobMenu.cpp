#include "ui/smartknob/SmartKnobMenu.h"

#include "engine/CPlatterdex.h"
#include "instruments/presets/SmartKnobLibrary.h"
#include "settings/SettingsFolder.h"
#include "support/language/Translate.h"
#include "ui/smartknob/SmartKnobEditorComponent.h"

SmartKnobMenu::SmartKnobMenu (CPlatterdex& e, int d, int k)
    : engine (e),
      deck (d),
      knob (k),
      userFiles (files (e))
{
}

PresetFiles SmartKnobMenu::files (CPlatterdex& engine)
{
    return { { "SmartKnob", tr ("Select a smart knob preset file..."), tr ("Save the smart knob preset...") },
             [&engine] {
                 return folderOf (engine.settings.smartknobFolder,
                                  engine.environment.folders.smartknobFiles());
             },
             engine.environment.prompts.get() };
}

juce::String SmartKnobMenu::nameOf (CPlatterdex& engine, int deck, int knob)
{
    const auto name = engine.smartKnobs.name (deck, knob);
    return name.empty() ? tr ("Empty") : juce::String::fromUTF8 (name.c_str());
}

void SmartKnobMenu::fill (juce::PopupMenu& menu)
{
    menu.addSectionHeader (tr ("Presets:"));
    for (const auto& group : SmartKnobLibrary::groups())
    {
        juce::PopupMenu presets;
        for (const auto& entry : group.entries)
            presets.addItem (entry.id, juce::String (std::string (entry.name)));
        menu.addSubMenu (juce::String (std::string (group.name)), presets);
    }
    menu.addSubMenu (tr ("User files"), userFiles.menu());
    menu.addSeparator();
    menu.addItem (load, tr ("Load"), userFiles.canAsk());
    menu.addItem (save, tr ("Save"), userFiles.canAsk());
    menu.addItem (clear, tr ("Clear"));
    menu.addItem (edit, tr ("Show Editor"));
}

void SmartKnobMenu::choose (int id, juce::Component& opener)
{
    const auto loadFile = [&e = engine, d = deck, k = knob] (const juce::File& file)
    { return SmartKnobLibrary::loadFile (e.smartKnobs, d, k, file); };
    if (id == load)
        userFiles.askToLoad (loadFile);
    else if (id == save)
        userFiles.askToSave (nameOf (engine, deck, knob),
                             [&e = engine, d = deck, k = knob] (const juce::File& file)
                             { return SmartKnobLibrary::saveFile (e.smartKnobs, d, k, file); });
    else if (id == clear)
        engine.smartKnobs.clear (deck, knob);
    else if (id == edit)
        SmartKnobEditorComponent::open (engine, deck, knob, opener);
    else if (id >= PresetFiles::firstId)
        userFiles.load (userFiles.fileOf (id), loadFile);
    else
        SmartKnobLibrary::loadFactory (engine.smartKnobs, deck, knob, id);
}

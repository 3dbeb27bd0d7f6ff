#include "ui/sampler/SamplerPadMenu.h"

#include "settings/SettingsFolder.h"
#include "support/language/Translate.h"
#include "ui/look/OpenMenu.h"

namespace
{
constexpr const char* sampleFiles = "*.mp3;*.m4a;*.wav;*.aiff;*.aif;*.wma;*.flac;*.ogg";

enum Item
{
    loadItem = 1,
    saveItem,
    renameItem,
    clearItem,
    firstMode,
    velocityItem = firstMode + samplePlayModeCount,
    syncItem
};

/** A folder that a dialog begins in: the one of the settings if it is there. */
juce::File startFolder (CPlatterdex& engine)
{
    return folderOf (engine.settings.samplesFolder, engine.sampler.folders.samples());
}

void load (CPlatterdex& engine, int pad)
{
    engine.environment.prompts->askFile ({ tr ("Select a sample file"), startFolder (engine), sampleFiles },
                                         [&engine, pad] (const juce::File& file)
                                         {
                                             if (file != juce::File())
                                                 engine.sampler.loadSample (pad, file);
                                         });
}

void save (CPlatterdex& engine, int pad)
{
    const auto name = juce::File::createLegalFileName (engine.sampler.desk.find (pad)->texts().name);
    engine.environment.prompts->askFile (
        { tr ("Save the sample file as..."), startFolder (engine).getChildFile (name + ".wav"), "*.wav",
          true },
        [&engine, pad] (const juce::File& file)
        {
            if (file == juce::File())
                return;
            const auto target =
                file.hasFileExtension ("wav") ? file : juce::File (file.getFullPathName() + ".wav");
            engine.sampler.saveSample (
                pad, target,
                [prompts = engine.environment.prompts, target] (bool isWritten)
                {
                    if (!isWritten)
                        juce::MessageManager::callAsync (
                            [prompts, target]
                            {
                                prompts->notify (tr ("Save Sample"), tr ("The sample can't be written to %1.",
                                                                         target.getFullPathName()));
                            });
                });
        });
}

void rename (CPlatterdex& engine, int pad)
{
    engine.environment.prompts->askText (tr ("Enter Sample Name"), tr ("Please enter name for the sample."),
                                         engine.sampler.desk.find (pad)->texts().name,
                                         [&engine, pad] (const std::optional<juce::String>& name)
                                         {
                                             if (name)
                                                 engine.sampler.rename (pad, *name);
                                         });
}

void choose (CPlatterdex& engine, int pad, int item)
{
    auto& sampler = engine.sampler;
    const auto& slot = *sampler.desk.find (pad);
    switch (item)
    {
    case loadItem:
        return load (engine, pad);
    case saveItem:
        return save (engine, pad);
    case renameItem:
        return rename (engine, pad);
    case clearItem:
        return sampler.clearSlot (pad);
    case velocityItem:
        return sampler.setFollowsVelocity (pad, slot.followsVelocity == 0);
    case syncItem:
        return sampler.setPadSync (pad, slot.sync == 0);
    default:
        return sampler.setPlayMode (pad, item - firstMode);
    }
}
}

void openSamplerPadMenu (CPlatterdex& engine, int pad, juce::Component& owner)
{
    const auto& slot = *engine.sampler.desk.find (pad);
    const auto filled = !slot.isEmpty(), asks = engine.environment.prompts != nullptr;
    juce::PopupMenu menu;
    menu.addItem (loadItem, tr ("Load Sample"), asks);
    menu.addItem (saveItem, tr ("Save Sample"), filled && asks);
    menu.addItem (renameItem, tr ("Rename"), filled && asks);
    menu.addItem (clearItem, tr ("Clear"), filled || slot.texts().filePath.isNotEmpty());
    menu.addSeparator();
    menu.addSectionHeader (tr ("Play Mode:"));
    constexpr const char* modes[samplePlayModeCount] { N_ ("One Shot"), N_ ("Trigger"), N_ ("ReTrigger"),
                                                       N_ ("Loop") };
    for (int mode = 0; mode < samplePlayModeCount; ++mode)
        menu.addItem (firstMode + mode, tr (modes[mode]), true, slot.playMode == mode);
    menu.addSeparator();
    menu.addItem (syncItem, tr ("Sync"), true, slot.sync != 0);
    menu.addItem (velocityItem, tr ("Velocity Sets Level"), true, slot.followsVelocity != 0);
    openMenu (menu, owner, juce::PopupMenu::Options().withTargetComponent (owner),
              [&engine, pad] (int item) { choose (engine, pad, item); });
}

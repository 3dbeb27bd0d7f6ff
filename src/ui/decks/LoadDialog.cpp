#include "ui/decks/LoadDialog.h"

#include "engine/CPlatterdex.h"
#include "support/files/AudioFileTypes.h"
#include "support/language/Translate.h"
#include "ui/decks/TrackLoad.h"
#include "ui/panel/PanelPaint.h"

namespace
{
constexpr const char* folderName = "load_folder";
}

LoadDialog::LoadDialog (CPlatterdex& e, PreferencesFile& p) : engine (e), preferences (p)
{
    for (int deck = 0; deck < deckCount; ++deck)
        decks.emplace_back (e, deck);
}

juce::File LoadDialog::folder() const
{
    const auto kept = preferences.get (folderName);
    if (juce::File::isAbsolutePath (kept) && juce::File (kept).isDirectory())
        return juce::File (kept);
    return juce::File (engine.settings.audioFolder.get());
}

void LoadDialog::open (int deck, juce::Component& asker)
{
    const std::function<void (const juce::Array<juce::File>&)> answered =
        [this, deck, alive = juce::Component::SafePointer<juce::Component> (&asker)] (const auto& files)
    { chosen (files, deck, alive); };
    dialog = std::make_unique<FileDialog> (
        Prompts::FileQuestion { tr ("Load a track into deck %1", PanelPaint::letterOf (deck)), folder(),
                                AudioFileTypes::wildcard },
        answered);
}

void LoadDialog::chosen (const juce::Array<juce::File>& files, int deck, juce::Component* asker)
{
    if (files.isEmpty())
        return;
    preferences.set (folderName, files.getFirst().getParentDirectory().getFullPathName());
    if (asker != nullptr)
        load (files, deck, *asker);
}

void LoadDialog::load (const juce::Array<juce::File>& files, int deck, juce::Component& asker, bool isHeld)
{
    const auto shown =
        static_cast<size_t> (engine.settings.editor[EditorPreference::fourDeckMode] != 0 ? deckCount : 2);
    const auto left =
        TrackLoad::inOrder (engine, std::span (decks).first (shown), files, deck, asker, isHeld);
    if (left > 0 && onLeft != nullptr)
        onLeft (left);
}

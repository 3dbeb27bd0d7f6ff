#pragma once

#include "support/Prompts.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** The user's preset files, as the popups of pads and knobs list, load and save them. Message thread. */
class PresetFiles
{
public:
    static constexpr int firstId = 5000; ///< of the files in a menu, in the order of the folder

    struct Words
    {
        juce::String what;                 ///< heads the sentences for the user
        juce::String loadTitle, saveTitle; ///< of the dialogs
        juce::String pattern = "*.xml";
    };

    using Folder = std::function<juce::File()>;

    /** @param folder    asked at each use
        @param prompts   may be null: then no dialog opens and no sentence is told. Outlive this */
    PresetFiles (Words, Folder folder, Prompts* prompts);

    /** Fills a submenu with the files of the folder, and keeps them for fileOf(). */
    juce::PopupMenu menu();

    /** The file of a menu's id; File() for an id of something else. */
    juce::File fileOf (int id) const;

    using Act = std::function<juce::String (const juce::File&)>; ///< @returns a sentence if it failed

    /** Loads a file and tells what is wrong with it. */
    void load (const juce::File&, const Act&) const;

    /** Lets the user choose a file to load, or a place to save to; an ending that is missing is added. */
    void askToLoad (Act) const;
    void askToSave (const juce::String& name, Act) const;

    bool canAsk() const noexcept { return prompts != nullptr; }

private:
    void tell (const juce::String& sentence) const;

    const Words words;
    const Folder folder;
    Prompts* const prompts;
    juce::Array<juce::File> files;
};

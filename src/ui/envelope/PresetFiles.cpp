#include "ui/envelope/PresetFiles.h"

#include "instruments/preset/PresetFile.h"
#include "support/language/Translate.h"

PresetFiles::PresetFiles (Words w, Folder f, Prompts* p)
    : words (std::move (w)),
      folder (std::move (f)),
      prompts (p)
{
}

juce::PopupMenu PresetFiles::menu()
{
    juce::PopupMenu made;
    files = folder().findChildFiles (juce::File::findFiles, false, words.pattern);
    files.removeIf ([] (const juce::File& file) { return !PresetFile::isReadable (file); });
    files.sort();
    for (int i = 0; i < files.size(); ++i)
        made.addItem (firstId + i, files[i].getFileNameWithoutExtension());
    if (files.isEmpty())
        made.addItem (-1, tr ("(none in %1)", folder().getFileName()), false);
    return made;
}

juce::File PresetFiles::fileOf (int id) const
{
    return files[id - firstId]; // File() out of range
}

void PresetFiles::tell (const juce::String& sentence) const
{
    if (sentence.isNotEmpty() && prompts != nullptr)
        prompts->notify (words.what, sentence);
}

void PresetFiles::load (const juce::File& file, const Act& act) const
{
    tell (act (file));
}

void PresetFiles::askToLoad (Act act) const
{
    if (prompts != nullptr)
        prompts->askFile ({ words.loadTitle, folder(), words.pattern, false },
                          [copy = *this, act = std::move (act)] (const juce::File& file)
                          {
                              if (file != juce::File())
                                  copy.tell (act (file));
                          });
}

void PresetFiles::askToSave (const juce::String& name, Act act) const
{
    if (prompts == nullptr)
        return;
    const auto ending = words.pattern.fromFirstOccurrenceOf (".", true, false);
    auto proposed = juce::File::createLegalFileName (name);
    if (proposed.isEmpty())
        proposed = "Preset";
    prompts->askFile ({ words.saveTitle, folder().getChildFile (proposed + ending), words.pattern, true },
                      [copy = *this, ending, act = std::move (act)] (const juce::File& file)
                      {
                          if (file != juce::File())
                              copy.tell (act (file.hasFileExtension (ending)
                                                  ? file
                                                  : juce::File (file.getFullPathName() + ending)));
                      });
}

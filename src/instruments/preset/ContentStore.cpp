#include "instruments/preset/ContentStore.h"

#include "instruments/preset/PresetFile.h"
#include "support/language/Translate.h"

#include <utility>

void ContentStore::add (Content content)
{
    const auto revision = content.revision();
    contents.push_back ({ std::move (content), revision });
}

std::string ContentStore::restore (Kept& kept) const
{
    const auto file = folder.getChildFile (kept.content.fileName);
    if (!file.existsAsFile())
        return {};
    const auto bytes = PresetFile::read (file);
    const auto fault = bytes ? kept.content.read (*bytes) : std::string (N_ ("It can't be read."));
    kept.known = kept.content.revision();
    if (fault.empty())
        return {};
    const auto spare = file.getSiblingFile (file.getFileName() + ".bad");
    juce::ignoreUnused (file.moveFileTo (spare)); // where it can't be moved it stays until the next change
    return tr ("%1 is damaged and begins anew; the old file is kept as %2.", kept.content.fileName,
               spare.getFileName())
        .toStdString();
}

std::vector<std::string> ContentStore::restore()
{
    std::vector<std::string> sentences;
    for (auto& kept : contents)
        if (auto sentence = restore (kept); !sentence.empty())
            sentences.push_back (std::move (sentence));
    return sentences;
}

bool ContentStore::hasChanged() const
{
    return std::any_of (contents.begin(), contents.end(),
                        [] (const Kept& kept) { return kept.isToBeWritten(); });
}

std::vector<ContentStore::Document> ContentStore::takeChanged()
{
    std::vector<Document> documents;
    for (size_t i = 0; i < contents.size(); ++i)
        if (auto& kept = contents[i]; kept.isToBeWritten())
        {
            kept.known =
                kept.content
                    .revision(); // before the bytes are made: a change meanwhile is seen the next time
            kept.isLost = false;
            documents.push_back ({ folder.getChildFile (kept.content.fileName), kept.content.write(), i });
        }
    return documents;
}

std::string ContentStore::takeComplaint()
{
    if (std::exchange (hasComplained, isFailing.get()) || !isFailing)
        return {};
    return tr ("Pads and SmartKnobs can't be kept: nothing can be written to %1. It is tried again until it "
               "can.",
               folder.getFullPathName())
        .toStdString();
}

void ContentStore::save()
{
    for (const auto& document : takeChanged())
        write (document);
}

void ContentStore::write (const Document& document)
{
    const auto failed = !PresetFile::write (document.file, document.bytes).empty();
    if (failed)
        contents[document.content].isLost = true;
    isFailing = failed;
}

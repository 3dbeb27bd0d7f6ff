#include "instruments/preset/ContentStore.h"

#include "instruments/preset/PresetFile.h"

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
    const auto fault = bytes ? kept.content.read (*bytes) : std::string ("It can't be read.");
    kept.known = kept.content.revision();
    if (fault.empty())
        return {};
    const auto spare = file.getSiblingFile (file.getFileName() + ".bad");
    juce::ignoreUnused (file.moveFileTo (spare)); // where it can't be moved it stays until the next change
    return kept.content.fileName + " is damaged and begins anew; the old file is kept as "
           + spare.getFileName().toStdString() + ".";
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
                        [] (const Kept& kept) { return kept.content.revision() != kept.known; });
}

std::vector<ContentStore::Document> ContentStore::takeChanged()
{
    std::vector<Document> documents;
    for (auto& kept : contents)
        if (const auto revision = kept.content.revision(); revision != kept.known)
        {
            kept.known = revision; // before the bytes are made: a change meanwhile is seen the next time
            documents.push_back ({ folder.getChildFile (kept.content.fileName), kept.content.write() });
        }
    return documents;
}

void ContentStore::save()
{
    for (const auto& document : takeChanged())
        juce::ignoreUnused (write (document));
}

bool ContentStore::write (const Document& document)
{
    return PresetFile::write (document.file, document.bytes).empty();
}

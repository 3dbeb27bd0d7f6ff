#pragma once

#include <juce_core/juce_core.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/** Keeps the contents of instruments in a folder, a file each, so that they survive the program. Whoever owns it restores
    at the start, takes what has changed now and then and writes it, and saves the rest at the end.

    A file that can't be read as what it must be leaves the content at its default, and is kept beside with ".bad" at its
    name's end. One thread at a time, not the audio thread. */
class ContentStore
{
public:
    /** Something that is kept. */
    struct Content
    {
        std::string fileName;
        std::function<uint32_t()> revision; ///< differs after a change
        std::function<std::string()> write; ///< the bytes of its file

        /** Takes over the bytes of a file. @returns a fault (see PresetXml), which has changed nothing, or "" */
        std::function<std::string (std::string_view)> read;
    };

    explicit ContentStore (juce::File folder) : folder (std::move (folder)) {}

    void add (Content);

    /** Reads all files that are there. @returns a sentence for each that is damaged */
    std::vector<std::string> restore();

    /** True if takeChanged() would give something. */
    bool hasChanged() const;

    struct Document
    {
        juce::File file;
        std::string bytes;
    };

    /** The files that have to be written: those of the contents which have changed since they were last asked for. */
    std::vector<Document> takeChanged();

    /** Writes what takeChanged() would give. What can't be written is lost: nobody is left to be told. */
    void save();

    /** Writes one file in one step. @returns false if that failed, which leaves the old file */
    static bool write (const Document&);

private:
    struct Kept
    {
        Content content;
        uint32_t known; ///< the revision that is in the file, or on its way there
    };

    std::string restore (Kept&) const;

    const juce::File folder;
    std::vector<Kept> contents;
};

#pragma once

#include "support/Relaxed.h"

#include <juce_core/juce_core.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/** Keeps the contents of instruments in a folder, a file each, so that they survive the program. Whoever owns it restores
    at the start, takes what has changed now and then and writes it, and saves the rest at the end.

    A file that can't be read as what it must be leaves the content at its default, and is kept beside with ".bad" at its
    name's end. What can't be written counts as changed until it can. One thread at a time, but for write(), and not the
    audio thread. */
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
        size_t content; ///< its index
    };

    /** The files that have to be written: those of the contents which have changed since they were last asked for, and those
        which could not be written since. */
    std::vector<Document> takeChanged();

    /** A sentence for the user when writing has begun to fail, "" at all other times. */
    std::string takeComplaint();

    /** Writes what takeChanged() would give. What can't be written is lost: nobody is left to be told. */
    void save();

    /** Writes one file in one step; a failure leaves the old file. Any thread that may block. */
    void write (const Document&);

private:
    struct Kept
    {
        Content content;
        uint32_t known;                 ///< the revision that is in the file, or on its way there
        Relaxed<bool> isLost { false }; ///< it did not get there

        bool isToBeWritten() const { return isLost || content.revision() != known; }
    };

    std::string restore (Kept&) const;

    const juce::File folder;
    std::vector<Kept> contents;
    Relaxed<bool> isFailing { false };
    bool hasComplained = false;
};

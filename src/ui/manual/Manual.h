#pragma once

#include "ui/manual/ManualText.h"

/** The pages of the manual as they lie in a folder: "index.md" names the others, in the order in which they are listed. Message
    thread. */
class Manual
{
public:
    /** A page of the folder. */
    struct Page
    {
        juce::String name; ///< without ".md"
        juce::String title;
        std::vector<ManualBlock> blocks;
    };

    static constexpr const char* indexName = "index";

    explicit Manual (const juce::File& folder);

    /** The folder "manual" beside the program or the plug-in. */
    static juce::File usualFolder();

    const juce::File& folder() const noexcept { return place; }

    /** The index first. Empty if there is no manual. */
    const std::vector<Page>& pages() const noexcept { return all; }

    /** The place of a page in the list, or -1. */
    int find (const juce::String& name) const;

private:
    /** @returns false if its file can't be read */
    bool add (const juce::String& name);

    const juce::File place;
    std::vector<Page> all;
};

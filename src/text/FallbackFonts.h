#pragma once

#include <juce_core/juce_core.h>

#include <functional>
#include <memory>
#include <thread>
#include <unordered_map>
#include <vector>

/** The fonts that the machine has, for the characters that ours lacks: names in Japanese, symbols. Files are
    looked at only when one is missing; bold sans ones first. One object for the program. Any thread.

    A search may open every font file of the machine. A program that only makes pictures waits for it; one with a window
    on a screen lets it run beside and paints again when something is found. */
class FallbackFonts
{
public:
    struct File
    {
        juce::String path;
        const void* data;
        size_t size;
        double heightPerEm;
    };

    static FallbackFonts& getInstance();
    ~FallbackFonts();

    /** The outcome of a search. */
    struct Found
    {
        const File* file = nullptr; ///< null where no font has the character; stays as long as the program
        bool isFinal = true;        ///< false while the search still runs: ask again later
    };

    Found findFont (uint32_t code);

    /** Searches on a thread of its own from now on. @param onFound   called on that thread after each search that found
        a font; of several calls the first one counts */
    void searchInBackground (std::function<void()> onFound);

private:
    struct Opened;

    FallbackFonts();

    const File* lookFor (uint32_t code);
    void searchUntil (std::stop_token);

    juce::CriticalSection lock; ///< of the answers and the questions
    std::unordered_map<uint32_t, const File*> answers;
    std::vector<uint32_t> questions;
    juce::WaitableEvent asked;
    std::function<void()> whenFound;

    juce::CriticalSection searching;             ///< held during a search, of all below
    std::vector<std::unique_ptr<Opened>> opened; ///< those that had a character once
    std::vector<juce::File> candidates;          ///< in the order of their fitness
    bool listed = false;

    std::jthread searcher; ///< last, so that it has ended before what it uses
};

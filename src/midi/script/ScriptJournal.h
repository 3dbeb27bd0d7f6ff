#pragma once

#include <juce_core/juce_core.h>

#include <cstdint>
#include <deque>
#include <mutex>
#include <span>
#include <string_view>
#include <vector>

/** One thing that a script, or the compiler about it, has to say. */
struct ScriptEntry
{
    enum class Kind
    {
        error,
        warning,
        info,
        log ///< a line of the script's own
    };

    Kind kind = Kind::error;
    juce::String file;        ///< the full path of the script, or of what it includes
    int line = 0, column = 0; ///< from 1; 0 where there is no place
    juce::String text;
    uint64_t number = 0; ///< given by the journal, from 1
};

/** Text from a script, which may hold any bytes: what is no UTF-8 is taken as Latin-1. JUCE's strings do not end on bytes that
    are neither. */
juce::String textFromScript (std::string_view);

/** "Error (Ln 3, Col 5) : ..."; a line of the script's own as it is. */
juce::String textOf (const ScriptEntry&);

/** The sentence that stands under a list of messages with an error in it. */
inline constexpr const char* correctErrorsSentence = "Please correct the errors in the script and try again.";

/** The last messages of all scripts. Scripts write, views and verbs read: nobody waits for a window. Any thread that may
    block. */
class ScriptJournal
{
public:
    /** Messages that are kept; older ones go. */
    static constexpr size_t capacity = 500;

    /** Adds what belongs together, such as the messages of one build, as one. */
    void add (std::span<const ScriptEntry>);
    void add (const ScriptEntry& entry) { add ({ &entry, 1 }); }

    /** The entries behind a number, the oldest first; 0 gives all. */
    std::vector<ScriptEntry> after (uint64_t number) const;

    /** The number of the newest entry, 0 if there was none. */
    uint64_t newest() const;

private:
    mutable std::mutex lock;
    std::deque<ScriptEntry> entries;
    uint64_t lastNumber = 0;
};

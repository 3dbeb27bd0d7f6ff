#pragma once

#include <juce_core/juce_core.h>

/** Notes why the program dies: a signal that ends it, or an exception that nobody catches. The process then ends as it would
    have without this, for a debugger or the system to look at. One at a time; made and ended on the message thread. */
class CrashNote
{
public:
    /** @param file   that gets the note; its folder must be there when the program dies */
    explicit CrashNote (const juce::File& file);
    ~CrashNote();
    CrashNote (const CrashNote&) = delete;
    CrashNote& operator= (const CrashNote&) = delete;
};

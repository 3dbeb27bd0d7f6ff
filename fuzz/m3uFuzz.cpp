#include "Check.h"

#include "library/formats/M3u.h"

/** Entries are lines with something in them, and what a path is written as is read again. */
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    static const juce::File folder ("/platterdex-nowhere");
    juce::MemoryInputStream stream (data, size, false);
    juce::StringArray lines;
    juce::String playlist = M3u::header();
    M3u::read (stream,
               [&] (const juce::String& line, juce::int64 position)
               {
                   FUZZ_CHECK (line.length() <= M3u::maxLineLength && line.trim().isNotEmpty());
                   FUZZ_CHECK (!line.containsAnyOf ("\r\n") && !line.startsWithChar ('#'));
                   FUZZ_CHECK (position <= static_cast<juce::int64> (size));
                   if (lines.size() < 100)
                       M3u::findFile (line, folder);
                   lines.add (line);
                   playlist << M3u::entry (lines.size(), line + "\n#", line, line);
                   return playlist.length() < (1 << 18);
               });

    juce::MemoryInputStream again (playlist.toRawUTF8(), playlist.getNumBytesAsUTF8(), false);
    juce::StringArray linesAgain;
    M3u::read (again, [&] (const juce::String& line, juce::int64) { return linesAgain.add (line), true; });
    FUZZ_CHECK (lines == linesAgain);
    return 0;
}

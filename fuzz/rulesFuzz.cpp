#include "Check.h"

#include "library/smart/SmartPlaylist.h"

/** Writes what was read of a document, which is read again as the same; its query is one statement. */
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    SmartPlaylist playlist;
    if (!parseXml (juce::String::createStringFromData (data, static_cast<int> (size)), playlist))
    {
        FUZZ_CHECK (playlist == SmartPlaylist());
        return 0;
    }
    SmartPlaylist again;
    FUZZ_CHECK (parseXml (buildXml (playlist), again));
    FUZZ_CHECK (again == playlist);

    // Outside quotes there is no semicolon but the last, and every quote is closed.
    const auto sql = buildSql (playlist);
    FUZZ_CHECK (sql.isEmpty() || sql.endsWith ("; "));
    auto isQuoted = false;
    for (auto c = sql.getCharPointer(); !c.isEmpty(); ++c)
    {
        isQuoted = isQuoted != (*c == '\'');
        FUZZ_CHECK (isQuoted || *c != ';' || juce::String (c) == "; ");
    }
    FUZZ_CHECK (!isQuoted);
    return 0;
}

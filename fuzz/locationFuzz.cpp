#include "Check.h"

#include "library/formats/Location.h"
#include "support/xml/Utf8.h"
#include "support/xml/XmlCharacters.h"

namespace
{
/** The text as the readers hand it over: well formed, whatever the bytes are. */
juce::String textOf (const uint8_t* data, size_t size)
{
    std::string text;
    for (size_t i = 0; i < size;)
    {
        const auto [character, length] = utf8At (data + i, size - i);
        XmlCharacters::append (text, character == 0 ? ' ' : character);
        i += length;
    }
    return juce::String::fromUTF8 (text.data(), static_cast<int> (text.size()));
}
}

/** A path has no zero byte, is well-formed text, and is absolute or names a drive. */
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    const auto text = textOf (data, size);
    const auto path = decodeLocation (text);
    const auto bytes = path.getNumBytesAsUTF8();
    FUZZ_CHECK (juce::CharPointer_UTF8::isValidString (path.toRawUTF8(), static_cast<int> (bytes)));
    FUZZ_CHECK (path.isEmpty() || path[0] == juce::File::getSeparatorChar() || path[1] == ':');
    FUZZ_CHECK (decodePercents (text).length() <= text.length());
    return 0;
}

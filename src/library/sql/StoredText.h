#pragma once

#include <juce_core/juce_core.h>

#include <span>
#include <string>

/** Values on their way into statements and out of rows. Independent of the process's locale, which belongs to the host. */
namespace StoredText
{
/** A text as a statement writes it: in "'", with every "'" in it doubled. Byte by byte, so that a text which is not valid
    UTF-8 can't hide one. */
std::string quoted (const juce::String&);

/** The text doubled in the same way, without the outer quotes. */
std::string escaped (const juce::String&);

/** Numbers as "1,2,3". */
std::string joined (std::span<const int32_t>);

/** A text that is taken for a whole number; 0 if it is none. */
std::string integerOf (const juce::String&);

/** A number as SQL writes it, with all its digits; 0 if it is not finite. */
std::string ofReal (double);

/** A number with two decimals. */
juce::String withTwoDecimals (double);

juce::String ofInteger (int64_t);

/** The text of a row, which may be null. Bytes that are not valid UTF-8 are read as Latin-1, which is what they were
    meant as most often; a text that is not valid could not be shown or walked through. */
juce::String read (const char* stored);
}

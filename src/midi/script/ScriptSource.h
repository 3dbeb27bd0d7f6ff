#pragma once

#include <juce_core/juce_core.h>

#include <optional>
#include <string>
#include <string_view>

/** The limits of what the compiler is given. It works its way down nested code by recursion and takes the square of a
    function's length, so text without limits would end the program or keep it busy for hours. */
namespace ScriptLimits
{
inline constexpr size_t fileBytes = 256 * 1024, sourceBytes = 512 * 1024, files = 32;
inline constexpr int nesting = 64;              ///< brackets within each other, of all kinds
inline constexpr int declarationTokens = 32768; ///< of one function, class or list of values
inline constexpr int choices = 64;              ///< ?: in one statement, whose time grows with their cube
inline constexpr int typeNesting = 8;           ///< array<array<...>>
}

/** A place in a script and the reason why it is refused. */
struct ScriptFault
{
    int line = 1, column = 1;
    std::string text;
};

/** Looks for code that goes beyond ScriptLimits, or ends within a comment or a text in three quotes. Any bytes; time grows with their number. */
std::optional<ScriptFault> faultOf (std::string_view source);

/** The text of a script's file without its byte order mark.
    @param reason   gets one sentence if it can't be had: it is no plain file, can't be read or is too long. Any thread that may block */
std::optional<std::string> readScriptFile (const juce::File&, juce::String& reason);

/** The file that an #include names, seen from a script: beside it, else in the folder of scripts.
    @returns File() if there is none, or if it lies outside of both */
juce::File resolveInclude (const juce::String& name, const juce::File& from, const juce::File& scriptFolder);

#include "midi/script/ScriptSource.h"

#include "support/files/RegularFile.h"

#include <algorithm>

namespace
{
/** The tokens of a script as far as its limits need them: comments and texts are stepped over as the compiler does. */
class Scanner
{
public:
    explicit Scanner (std::string_view s) : source (s) {}

    /** The first character of the next token; 'a' for a word or number, '"' for a text, 0 at the end. */
    char next()
    {
        skipBlanks();
        if (at >= source.size())
            return 0;
        tokenLine = line;
        tokenColumn = static_cast<int> (at - lineStart) + 1;
        const auto c = source[at];
        if (c == '"' || c == '\'')
            return endsText = skipText (c), '"';
        if (!isWordPart (c))
            return ++at, c;
        while (at < source.size() && isWordPart (source[at]))
            ++at;
        return 'a';
    }

    /** True at the end of a text whose last comment does not end. */
    bool isInComment() const { return breaksOff; }

    /** True at the end of a text whose last long text, one in three quotes, does not end. */
    bool isInLongText() const { return !endsText; }

    ScriptFault faultHere (std::string text) const { return { tokenLine, tokenColumn, std::move (text) }; }

private:
    static bool isWordPart (char c)
    {
        return c == '_' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')
               || static_cast<unsigned char> (c) >= 0x80;
    }

    bool startsWith (std::string_view text) const { return source.substr (at).starts_with (text); }

    void step()
    {
        if (source[at++] == '\n')
        {
            ++line;
            lineStart = at;
        }
    }

    /** @returns false if the text ends before */
    bool skipTo (std::string_view ending)
    {
        while (at < source.size() && !startsWith (ending))
            step();
        const auto isThere = at < source.size();
        for (size_t i = 0; i < ending.size() && at < source.size(); ++i)
            step();
        return isThere;
    }

    void skipBlanks()
    {
        while (at < source.size())
        {
            if (startsWith ("//"))
                skipTo ("\n");
            else if (startsWith ("/*"))
            {
                tokenLine = line;
                tokenColumn = static_cast<int> (at - lineStart) + 1;
                at += 2;
                breaksOff = !skipTo ("*/");
            }
            else if (static_cast<unsigned char> (source[at]) <= ' ')
                step();
            else
                return;
        }
    }

    /** Steps over a text, which goes on over ends of lines, as it does for the compiler before that finds fault with it.
        @returns false if it is a long one that does not end */
    bool skipText (char quote)
    {
        if (startsWith ("\"\"\""))
        {
            at += 3;
            return skipTo ("\"\"\"");
        }
        for (step(); at < source.size() && source[at] != quote; step())
            if (source[at] == '\\' && at + 1 < source.size())
                step();
        if (at < source.size())
            ++at;
        return true;
    }

    std::string_view source;
    size_t at = 0, lineStart = 0;
    int line = 1, tokenLine = 1, tokenColumn = 1;
    bool breaksOff = false, endsText = true;
};
}

std::optional<ScriptFault> faultOf (std::string_view source)
{
    Scanner scanner (source);
    auto depth = 0, tokens = 0, typeDepth = 0, choices = 0;
    char before = 0;
    for (auto c = scanner.next(); c != 0; before = c, c = scanner.next())
    {
        if (++tokens > ScriptLimits::declarationTokens)
            return scanner.faultHere ("This function is too long; divide it into smaller ones.");

        const auto opens = c == '{' || c == '(' || c == '[';
        const auto closes = c == '}' || c == ')' || c == ']';
        depth = std::max (0, depth + (opens ? 1 : closes ? -1 : 0));
        if (depth > ScriptLimits::nesting)
            return scanner.faultHere ("Too many brackets stand within each other.");

        typeDepth = c == '<' && before == 'a' ? typeDepth + 1 : c == 'a' && before == '<' ? typeDepth : 0;
        if (typeDepth > ScriptLimits::typeNesting)
            return scanner.faultHere ("Too many types stand within each other.");

        choices = c == '?' ? choices + 1 : c == ';' || c == '{' || c == '}' ? 0 : choices;
        if (choices > ScriptLimits::choices)
            return scanner.faultHere ("This statement has too many choices (?:).");

        if (depth == 0 && (c == ';' || c == '}'))
            tokens = 0;
    }
    if (scanner.isInComment())
        return scanner.faultHere ("This comment does not end.");
    if (scanner.isInLongText()) // the compiler would look behind its end
        return scanner.faultHere ("This text in three quotes does not end.");
    return std::nullopt;
}

std::optional<std::string> readScriptFile (const juce::File& file, juce::String& reason)
{
    if (!isRegularFile (file))
    {
        reason = file.exists() ? file.getFullPathName() + " is no file."
                               : "There is no file " + file.getFullPathName() + ".";
        return std::nullopt;
    }
    juce::FileInputStream stream (file);
    if (!stream.openedOk())
    {
        reason = "The file " + file.getFullPathName() + " can't be read.";
        return std::nullopt;
    }
    std::string text (ScriptLimits::fileBytes + 1, 0);
    text.resize (
        static_cast<size_t> (std::max (0, stream.read (text.data(), static_cast<int> (text.size())))));
    if (text.size() > ScriptLimits::fileBytes)
    {
        reason = "The file " + file.getFullPathName() + " is longer than 256 KB.";
        return std::nullopt;
    }
    constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";
    if (text.starts_with (byteOrderMark))
        text.erase (0, byteOrderMark.size());
    return text;
}

juce::File resolveInclude (const juce::String& name, const juce::File& from, const juce::File& scriptFolder)
{
    if (name.isEmpty() || juce::File::isAbsolutePath (name))
        return {};
    for (const auto& folder : { from.getParentDirectory(), scriptFolder })
    {
        if (folder == juce::File())
            continue;
        const auto file = folder.getChildFile (name);
        if (file.isAChildOf (folder) && file.existsAsFile())
            return file;
    }
    return {};
}

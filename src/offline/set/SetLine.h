#pragma once

#include <optional>
#include <string>
#include <string_view>

/** One line of a set, taken apart word by word. The first failure is the line's; what is read after it is of no account. */
class SetLine
{
public:
    /** @param text   outlives this */
    explicit SetLine (std::string_view text) : rest (text) { skipBlanks(); }

    /** Nothing but blanks or a comment is left. */
    bool isAtEnd() const noexcept { return rest.empty() || rest.front() == '#'; }

    /** The next word, or an empty one at the line's end. */
    std::string_view word();

    /** A path in quotes, or without them everything up to a comment or a last word "nowait". @param whose   "A load" */
    std::string_view path (const std::string& whose = "A load");

    /** A name: one word, or several in quotes. @param what   begins the sentence of one that is missing */
    std::string_view name (const char* what);

    /** @param what   begins the sentence of a word that is missing or no number */
    double number (const char* what);
    float singleNumber (const char* what);

    /** A whole number as the next word and the last. @returns nothing, and the line as it was, if there is none */
    std::optional<int> onlyNumber();

    /** A byte, decimal or as 0x90. @param what   begins the sentence of one that is missing, no number or out of its range */
    int byte (const std::string& what, int lowest, int highest);

    /** 0 to 3 for A to D. @param whose   "A load", for the sentence */
    int deck (const std::string& whose);

    /** A command by its number or constant; 0 after a failure. */
    int command (bool metersToo);

    void expectEnd();

    /** @returns nothing, for readers of text that end with it */
    std::string_view fail (std::string sentence);

    /** One sentence, or nothing as long as all is well. */
    const std::string& error() const noexcept { return failure; }

    /** A piece of the user's text for a sentence, cut short between two characters. */
    static std::string quoted (std::string_view text);

    /** @returns nothing for what is no finite number */
    static std::optional<double> toNumber (std::string_view word);

private:
    void skipBlanks();
    std::string_view quotedText (const std::string& what);
    std::string_view barePath (const std::string& whose);

    std::string_view rest;
    std::string failure;
};

#pragma once

#include <string>
#include <string_view>

/** Upper and lower case of all scripts, letter by letter, independent of the process's locale, which belongs to the host.
    Texts are UTF-8; bytes that are not stay as they are. */
namespace LetterCase
{
std::string upper (std::string_view);
std::string lower (std::string_view);

/** Makes texts equal that differ in case alone: the lower case of the upper case. @param folded   replaced */
void fold (std::string_view text, std::string& folded);

/** A pattern as LIKE has it: "%" stands for any text, "_" for any character, letters for both of their cases. */
class Pattern
{
public:
    explicit Pattern (std::string_view like);

    /** Any number of threads at a time. */
    bool matches (std::string_view text) const;

private:
    std::string folded;
    std::string literal; ///< of a pattern that is "%literal%"
    bool isContained = false;
    bool isPlain = false; ///< the literal is ASCII
};
}

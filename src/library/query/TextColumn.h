#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/** The different texts of one column of all songs, each once and by number, as a search and an order need them. Texts that
    differ in case alone are one. Reading is for many threads at a time, adding for one alone. */
class TextColumn
{
public:
    /** The number of a text, which is added if it is new. @param text   UTF-8; a zero byte ends it */
    uint32_t add (std::string_view text);
    uint32_t size() const { return static_cast<uint32_t> (starts.size()); }

    /** In upper case. */
    std::string_view upper (uint32_t value) const;

    /** In upper case and without accents. */
    std::string_view folded (uint32_t value) const;

    /** Marks the texts in which a word is. @param word   folded, without wildcards @param hits   one for each text; 1 is set */
    void find (std::string_view word, std::vector<uint8_t>& hits) const;

    /** The same for a pattern as LIKE has it, without the outer "%". */
    void findPattern (std::string_view pattern, std::vector<uint8_t>& hits) const;

    /** The same for whole texts. */
    void findWhole (std::string_view text, std::vector<uint8_t>& hits) const;

    /** The place of each text among all by the bytes of its upper case.
        @param before   what this gave when the column had fewer texts, so that only the others are sorted; may be empty */
    std::vector<uint32_t> ranks (std::span<const uint32_t> before) const;

    /** Gives back what adding took in advance. */
    void shrink();
    size_t bytesUsed() const;

private:
    std::string_view entry (uint32_t value) const;
    void growTable();
    uint32_t& slotOf (std::string_view upperCase);

    std::string
        bytes; ///< of each text the upper case and a zero, then, if it differs, the folded one and a zero
    std::vector<uint32_t> starts; ///< of each text in `bytes`
    std::vector<uint32_t> slots;  ///< a table of numbers + 1 by their text's hash; half of it is free
    std::string upperText, foldedText;
};

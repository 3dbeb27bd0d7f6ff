#include "library/query/FoldedText.h"

#include "library/sql/LetterCase.h"

#include <array>
#include <cstdint>
#include <vector>

namespace
{
/** Letters in upper case that a keyboard may lack, by what is typed in their place: the accented letters of Latin, Greek
    and Cyrillic, and the ligatures. */
struct Plain
{
    const char* typed;
    std::u32string_view letters;
};

constexpr std::array plainLetters {
    Plain { "A", U"ÀÁÂÃÄÅĀĂĄǍǞǠǺȀȂȦȺẠẢẤẦẨẪẬẮẰẲẴẶ" },
    Plain { "AE", U"ÆǢǼ" },
    Plain { "B", U"ƁɃḂḄḆ" },
    Plain { "C", U"ÇĆĈĊČƇȻḈ" },
    Plain { "D", U"ÐĎĐƊḊḌḎḐḒ" },
    Plain { "E", U"ÈÉÊËĒĔĖĘĚȄȆȨɆḔḖḘḚḜẸẺẼẾỀỂỄỆ" },
    Plain { "F", U"ƑḞ" },
    Plain { "G", U"ĜĞĠĢƓǤǦǴḠ" },
    Plain { "H", U"ĤĦȞḢḤḦḨḪ" },
    Plain { "I", U"ÌÍÎÏĨĪĬĮİǏȈȊƗḬḮỈỊı" },
    Plain { "J", U"ĴɈ" },
    Plain { "K", U"ĶƘǨḰḲḴ" },
    Plain { "L", U"ĹĻĽĿŁȽḶḸḺḼ" },
    Plain { "M", U"ḾṀṂ" },
    Plain { "N", U"ÑŃŅŇŊǸƝṄṆṈṊ" },
    Plain { "O", U"ÒÓÔÕÖØŌŎŐƠǑǪǬǾȌȎȪȬȮȰṌṎṐṒỌỎỐỒỔỖỘỚỜỞỠỢ" },
    Plain { "OE", U"Œ" },
    Plain { "P", U"ƤṔṖ" },
    Plain { "R", U"ŔŖŘȐȒɌṘṚṜṞ" },
    Plain { "S", U"ŚŜŞŠȘṠṢṤṦṨ" },
    Plain { "SS", U"ßẞ" },
    Plain { "T", U"ŢŤŦƬȚȾṪṬṮṰ" },
    Plain { "TH", U"Þ" },
    Plain { "U", U"ÙÚÛÜŨŪŬŮŰŲƯǓǕǗǙǛȔȖṲṴṶṸṺỤỦỨỪỬỮỰ" },
    Plain { "V", U"ṼṾ" },
    Plain { "W", U"ŴẀẂẄẆẈ" },
    Plain { "X", U"ẊẌ" },
    Plain { "Y", U"ÝŶŸƳȲɎẎỲỴỶỸ" },
    Plain { "Z", U"ŹŻŽƵȤẐẒẔ" },
    Plain { "Α", U"Ά" },
    Plain { "Ε", U"Έ" },
    Plain { "Η", U"Ή" },
    Plain { "Ι", U"ΊΪ" },
    Plain { "Ο", U"Ό" },
    Plain { "Υ", U"ΎΫ" },
    Plain { "Ω", U"Ώ" },
    Plain { "Е", U"ЀЁ" },
    Plain { "И", U"ЍЙ" },
};

/** Accents that stand behind their letter, as some systems write them. */
constexpr bool isCombining (char32_t c)
{
    return c >= 0x300 && c < 0x370;
}

constexpr char32_t tableEnd = 0x2000;

/** Row numbers of plainLetters from 1, by letter. */
const std::vector<uint8_t>& rowsByLetter()
{
    static const auto table = []
    {
        std::vector<uint8_t> rows (tableEnd);
        for (size_t row = 0; row < plainLetters.size(); ++row)
            for (const auto letter : plainLetters[row].letters)
                rows[letter] = static_cast<uint8_t> (row + 1);
        return rows;
    }();
    return table;
}

/** Decodes two or three bytes; other bytes come as 0, one at a time. */
char32_t decode (std::string_view text, size_t at, size_t& bytes)
{
    const auto byte = [&] (size_t i) { return static_cast<unsigned char> (text[at + i]); };
    const auto left = text.size() - at;
    bytes = 1;
    if (byte (0) >= 0xc2 && byte (0) < 0xe0 && left > 1)
    {
        bytes = 2;
        return static_cast<char32_t> ((byte (0) & 0x1f) << 6 | (byte (1) & 0x3f));
    }
    if (byte (0) >= 0xe0 && byte (0) < 0xf0 && left > 2)
    {
        bytes = 3;
        return static_cast<char32_t> ((byte (0) & 0x0f) << 12 | (byte (1) & 0x3f) << 6 | (byte (2) & 0x3f));
    }
    return 0;
}
}

void FoldedText::strip (std::string_view text, std::string& result)
{
    result.clear();
    const auto& rows = rowsByLetter();
    for (size_t i = 0, bytes = 1; i < text.size(); i += bytes)
    {
        if (static_cast<unsigned char> (text[i]) < 0x80)
        {
            bytes = 1;
            result += text[i];
            continue;
        }
        const auto letter = decode (text, i, bytes);
        if (isCombining (letter))
            continue;
        if (const auto row = letter < tableEnd ? rows[letter] : 0; row != 0)
            result += plainLetters[row - 1u].typed;
        else
            result.append (text.substr (i, bytes));
    }
}

void FoldedText::upper (std::string_view text, std::string& result)
{
    result.resize (text.size());
    for (size_t i = 0; i < text.size(); ++i)
    {
        const auto c = static_cast<unsigned char> (text[i]);
        if (c >= 0x80)
        {
            result = LetterCase::upper (text);
            return;
        }
        result[i] = static_cast<char> (c >= 'a' && c <= 'z' ? c - 32 : c);
    }
}

std::string FoldedText::of (std::string_view text)
{
    std::string upperCase, stripped;
    upper (text, upperCase);
    strip (upperCase, stripped);
    return stripped;
}

#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

/** The form of a sentence that goes with a number, as gettext's header "Plural-Forms" gives it: "nplurals=2; plural=(n != 1);".

    An expression of C over `n` with ?: || && == != < > <= >= + - * / % ! and parentheses. Any thread. */
class PluralRule
{
public:
    /** That of English: the first form for 1, the second for all else. */
    PluralRule();

    /** @param text   the value of "Plural-Forms"
        @returns nothing if it can't be read, or has more than 6 forms or 128 operators */
    static std::optional<PluralRule> read (std::string_view text);

    /** @returns 0 to forms() - 1; a rule that gives another one means the last form */
    int formFor (uint64_t n) const;

    int forms() const noexcept { return count; }

private:
    /** A step on a stack of numbers. */
    struct Step
    {
        enum class Kind
        {
            number,
            n,
            negate,
            choose,
            either,
            both,
            equal,
            unequal,
            less,
            greater,
            lessOrEqual,
            greaterOrEqual,
            add,
            subtract,
            multiply,
            divide,
            remainder
        };
        Kind kind {};
        uint64_t value = 0;
    };

    friend class PluralReader;
    std::vector<Step> steps; ///< operands first
    int count = 2;
};

#include "support/language/PluralRule.h"

#include <algorithm>
#include <array>
#include <utility>

/** Reads an expression by descent, an operator's level a call. */
class PluralReader
{
public:
    using Kind = PluralRule::Step::Kind;

    explicit PluralReader (std::string_view t) : text (t) {}

    std::optional<std::vector<PluralRule::Step>> read()
    {
        if (!choice (0))
            return {};
        skipBlanks();
        return text.empty() || text.front() == ';' ? std::optional (std::move (steps)) : std::nullopt;
    }

private:
    static constexpr size_t mostSteps = 256;
    static constexpr int deepest = 32;

    struct Operator
    {
        std::string_view sign;
        Kind kind;
    };

    /** Operators from the loosest to the tightest; within a level the longer sign first. */
    static constexpr std::array<std::array<Operator, 4>, 6> levels { {
        { { { "||", Kind::either } } },
        { { { "&&", Kind::both } } },
        { { { "==", Kind::equal }, { "!=", Kind::unequal } } },
        { { { "<=", Kind::lessOrEqual },
            { ">=", Kind::greaterOrEqual },
            { "<", Kind::less },
            { ">", Kind::greater } } },
        { { { "+", Kind::add }, { "-", Kind::subtract } } },
        { { { "*", Kind::multiply }, { "/", Kind::divide }, { "%", Kind::remainder } } },
    } };

    void skipBlanks()
    {
        while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
            text.remove_prefix (1);
    }

    bool take (std::string_view sign)
    {
        skipBlanks();
        if (!text.starts_with (sign))
            return false;
        text.remove_prefix (sign.size());
        return true;
    }

    bool push (Kind kind, uint64_t value = 0)
    {
        steps.push_back ({ kind, value });
        return steps.size() <= mostSteps;
    }

    bool choice (int depth)
    {
        if (depth > deepest || !binary (0, depth))
            return false;
        if (!take ("?"))
            return true;
        return choice (depth + 1) && take (":") && choice (depth + 1) && push (Kind::choose);
    }

    bool binary (size_t level, int depth)
    {
        if (level == levels.size())
            return unary (depth);
        if (!binary (level + 1, depth))
            return false;
        for (;;)
        {
            const auto& row = levels[level];
            const auto* found = std::find_if (row.begin(), row.end(),
                                              [this] (const Operator& each)
                                              { return !each.sign.empty() && take (each.sign); });
            if (found == row.end())
                return true;
            if (!binary (level + 1, depth) || !push (found->kind))
                return false;
        }
    }

    bool unary (int depth)
    {
        skipBlanks();
        if (depth > deepest || text.empty())
            return false;
        if (text.front() == '!')
        {
            text.remove_prefix (1);
            return unary (depth + 1) && push (Kind::negate);
        }
        if (take ("("))
            return choice (depth + 1) && take (")");
        if (take ("n"))
            return push (Kind::n);
        if (text.front() < '0' || text.front() > '9')
            return false;
        uint64_t value = 0;
        while (!text.empty() && text.front() >= '0' && text.front() <= '9')
        {
            value = std::min<uint64_t> (value * 10 + static_cast<uint64_t> (text.front() - '0'), 1u << 30);
            text.remove_prefix (1);
        }
        return push (Kind::number, value);
    }

    std::string_view text;
    std::vector<PluralRule::Step> steps;
};

namespace
{
/** The value of a field of "nplurals=2; plural=n != 1;", or nothing. */
std::optional<std::string_view> valueOf (std::string_view text, std::string_view name)
{
    for (auto at = text.find (name); at != std::string_view::npos; at = text.find (name, at + 1))
    {
        const auto sign = text.find_first_not_of (" \t", at + name.size());
        const auto startsWord = at == 0 || text[at - 1] == ' ' || text[at - 1] == ';';
        if (startsWord && sign != std::string_view::npos && text[sign] == '=')
            return text.substr (sign + 1);
    }
    return {};
}
}

PluralRule::PluralRule()
    : steps { { Step::Kind::n, 0 }, { Step::Kind::number, 1 }, { Step::Kind::unequal, 0 } }
{
}

std::optional<PluralRule> PluralRule::read (std::string_view text)
{
    const auto number = valueOf (text, "nplurals");
    const auto rule = valueOf (text, "plural");
    if (!number || !rule)
        return {};
    const auto digit = number->find_first_not_of (" \t");
    constexpr int most = 6;
    if (digit == std::string_view::npos || (*number)[digit] < '1' || (*number)[digit] > '0' + most)
        return {};
    auto steps = PluralReader (*rule).read();
    if (!steps)
        return {};
    PluralRule made;
    made.steps = std::move (*steps);
    made.count = (*number)[digit] - '0';
    return made;
}

int PluralRule::formFor (uint64_t n) const
{
    using Kind = Step::Kind;
    std::vector<uint64_t> stack;
    stack.reserve (steps.size());
    for (const auto& step : steps)
    {
        if (step.kind == Kind::number || step.kind == Kind::n)
        {
            stack.push_back (step.kind == Kind::n ? n : step.value);
            continue;
        }
        if (step.kind == Kind::negate)
        {
            stack.back() = stack.back() == 0 ? 1 : 0;
            continue;
        }
        const auto right = stack.back();
        stack.pop_back();
        auto& left = stack.back();
        switch (step.kind)
        {
        case Kind::choose:
        {
            const auto whenTrue = left;
            stack.pop_back();
            stack.back() = stack.back() != 0 ? whenTrue : right;
            break;
        }
        case Kind::either:
            left = left != 0 || right != 0 ? 1 : 0;
            break;
        case Kind::both:
            left = left != 0 && right != 0 ? 1 : 0;
            break;
        case Kind::equal:
            left = left == right ? 1 : 0;
            break;
        case Kind::unequal:
            left = left != right ? 1 : 0;
            break;
        case Kind::less:
            left = left < right ? 1 : 0;
            break;
        case Kind::greater:
            left = left > right ? 1 : 0;
            break;
        case Kind::lessOrEqual:
            left = left <= right ? 1 : 0;
            break;
        case Kind::greaterOrEqual:
            left = left >= right ? 1 : 0;
            break;
        case Kind::add:
            left += right;
            break;
        case Kind::subtract:
            left -= right;
            break;
        case Kind::multiply:
            left *= right;
            break;
        case Kind::divide:
            left = right != 0 ? left / right : 0;
            break;
        case Kind::remainder:
            left = right != 0 ? left % right : 0;
            break;
        case Kind::number:
        case Kind::n:
        case Kind::negate:
            break;
        }
    }
    return static_cast<int> (std::min<uint64_t> (stack.back(), static_cast<uint64_t> (count - 1)));
}

#include "session/report/SetJournal.h"

#include "deck/state/DeckNumbers.h"
#include "engine/CommandTable.h"
#include "settings/SettingNames.h"
#include "support/DecimalText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

namespace
{
constexpr std::string_view end = "# The rest of this set is not kept: it is too long.\n";

/** The shortest decimal text that is read as the same number. */
std::string exact (float value)
{
    std::array<char, 64> text;
    const auto [last, error] =
        std::to_chars (text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    return { text.data(), last };
}

std::string lineOf (const HandLog::Action& action, double seconds)
{
    auto line = decimalText (seconds, 3);
    if (action.path)
    {
        const auto deck = std::string (1, static_cast<char> ('A' + action.deck));
        const auto path = action.path->toStdString();
        // A name that neither a line nor its quotes can hold is told of all the same.
        if (path.find_first_of ("\"\r\n") != std::string::npos)
            return "# " + line + " load " + deck + ": a name with a quote or an end of line\n";
        return line + " load " + deck + " \"" + path + "\"\n";
    }
    line += " set " + CommandTable::constant (action.number) + " " + exact (action.value);
    if (action.arg1 != 1.0f || action.arg2 != 1.0f)
        line += " " + exact (action.arg1) + " " + exact (action.arg2);
    return line + "\n";
}
}

SetJournal::SetJournal (HandLog& h) : hands (h) {}

std::string SetJournal::head (const EngineSettings& now, const EngineSettings& atFirst) const
{
    std::string lines = "# What was done in one run of the program; platterdex perform plays it.\n";
    for (const auto& row : SettingName::all())
        for (int deck = 0; deck < (row.isOfDeck ? deckCount : 1) && !row.isText(); ++deck)
        {
            const NamedSetting setting { &row, deck };
            if (const auto value = setting.valueIn (now); value != setting.valueIn (atFirst))
                lines += ("0 setting " + setting.fullName() + " " + value + "\n").toStdString();
        }
    return lines;
}

std::string SetJournal::takeLines()
{
    std::string lines;
    while (const auto action = hands.next())
    {
        if (written >= longest)
            continue; // the hands' queue is emptied all the same
        last = std::max (
            last, action->at); // two threads may write out of order by a little; a time never goes back
        const auto line = lineOf (*action, static_cast<double> (last - begin) / 1e9);
        written += line.size();
        lines += written >= longest ? std::string (end) : line;
    }
    if (const auto lost = hands.lost(); lost != toldLost)
    {
        lines += "# " + std::to_string (lost - toldLost) + " actions came too fast and are missing here.\n";
        toldLost = lost;
    }
    return lines;
}

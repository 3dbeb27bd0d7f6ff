#include "offline/set/SetActions.h"

#include <cmath>

SetScript::Action readMidi (SetLine& line)
{
    SetScript::Midi midi;
    midi.port = line.name ("The name of the controller");
    midi.status = line.byte ("The status", 128, 239);
    midi.data = line.byte ("The data byte", 0, 127);
    midi.value = line.byte ("The value", 0, 127);
    line.expectEnd();
    return midi;
}

SetScript::Action readScript (SetLine& line)
{
    if (line.isAtEnd())
        line.fail ("A script needs the path of its file.");
    SetScript::Script script { std::string (line.path()) };
    line.expectEnd();
    return script;
}

SetScript::Action readBrowse (SetLine& line)
{
    using Action = SetScript::Browse::Action;
    SetScript::Browse browse;
    const auto action = line.word();
    if (action == "source")
    {
        browse.action = Action::source;
        browse.text = line.name ("The name of the source");
    }
    else if (action == "search")
    {
        browse.action = Action::search;
        browse.text = line.name ("The text of the search");
    }
    else if (action == "sort")
    {
        browse.action = Action::sort;
        browse.text = line.name ("The name of the column");
    }
    else if (action == "select")
    {
        browse.action = Action::select;
        const auto row = line.number ("The row");
        if (line.error().empty() && !(row >= 1.0 && row <= 1e6 && row == std::floor (row)))
            line.fail ("A row is a number from 1.");
        else
            browse.number = static_cast<int> (row);
    }
    else
    {
        line.fail ("A browse is source, search, select or sort, not " + SetLine::quoted (action) + ".");
    }
    if (browse.action == Action::sort)
    {
        const auto way = line.word();
        if (!way.empty() && way != "down")
            line.fail ("After the column only \"down\" may follow, not " + SetLine::quoted (way) + ".");
        browse.number = way.empty() ? 1 : -1;
    }
    line.expectEnd();
    return browse;
}

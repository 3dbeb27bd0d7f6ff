#include "ui/widgets/CommandNumbers.h"

#include "engine/CommandTable.h"

#include <string>

int commandNumberOf (std::string_view constant, int deck)
{
    std::string whole (constant);
    if (whole.ends_with ('_'))
        whole += static_cast<char> ('A' + deck);
    return CommandTable::numberOf (whole);
}

#include "engine/BrowserRequests.h"

#include <algorithm>

BrowserRequests BrowserRequests::all;

void BrowserRequests::add (const CPlatterdex& engine, Receiver& receiver)
{
    deliver(); // what is older is for nobody
    receivers.push_back ({ &engine, &receiver });
}

void BrowserRequests::remove (Receiver& receiver)
{
    std::erase_if (receivers, [&receiver] (const Entry& entry) { return entry.receiver == &receiver; });
}

void BrowserRequests::deliver()
{
    Item item;
    while (queue.pop (item))
    {
        const auto found =
            std::find_if (receivers.rbegin(), receivers.rend(),
                          [&item] (const Entry& entry) { return entry.engine == item.engine; });
        if (found != receivers.rend())
            found->receiver->carryOut (item.request, item.deck);
    }
}
